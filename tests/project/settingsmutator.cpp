// SPDX-License-Identifier: MIT
#include "project/settingsmutator.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstring>

namespace
{
/** Values that stand where others are expected. */
const char* const Values[] = {"null",
                              "true",
                              "false",
                              "0",
                              "-0.0",
                              "1",
                              "2.5",
                              "-1",
                              "2147483647",
                              "2147483648",
                              "-2147483649",
                              "9007199254740993",
                              "18446744073709551616",
                              "1e308",
                              "-1.7976931348623157e308",
                              "5e-324",
                              "1e999",
                              "1e-999",
                              "0.1000000000000000055511151231257827",
                              "1000000000000000000000000000000000000000000000000000",
                              "NaN",
                              "Infinity",
                              "01",
                              "\"\"",
                              "\"true\"",
                              "\"1\"",
                              "\"\\u0000\\ud800\"",
                              "\"//\"",
                              "\"////.json\"",
                              "[]",
                              "[{}]",
                              "[[], 1, null, {\"Point\": [{}]}]",
                              "{}",
                              "{\"FrameNr\": 1}",
                              "",
                              ","};

const char* const Keys[] = {"SourceFile",
                            "ExportFile",
                            "TrackingFile",
                            "StabilizationFile",
                            "StabilizeType",
                            "MaxTrackingPoints",
                            "IgnoreSections",
                            "EnGlobalIgnoreList",
                            "FlowH",
                            "FlowV",
                            "FlowAngle",
                            "UseFlowVSettings",
                            "EnableCrop",
                            "CropFactor",
                            "EnRescale",
                            "UseFlowRotSettings",
                            "ExpResH",
                            "ExpResV",
                            "ExpOffH",
                            "ExpOffV",
                            "ExpAngle",
                            "UseModified",
                            "UseStartValue",
                            "UseEndValue",
                            "Lock",
                            "AvgPathImages",
                            "AvgPathOrder",
                            "IgnoreStartFramesMargin",
                            "StartValue",
                            "EndValue",
                            "ManualPath",
                            "EnableIgnoreSections",
                            "Point",
                            "FrameNr",
                            "Value",
                            "EnableManualPath",
                            "Start",
                            "End",
                            "Offset",
                            "AutoLoadLastProject",
                            "ProjectFile",
                            "StyleSheet",
                            "RecentList",
                            "DirList",
                            "Dir",
                            "nobody's key"};

const char* const Texts[] = {"", "a.mov", "/a//b///c", "p.json", "%1%2", "ä中", "true", "12"};
const double Numbers[] = {0.0,   1.0, -1.0,         2.5,          800.0, 1e-300,
                          1e300, 0.1, 2147483647.0, 2147483648.0, -2e10, 9007199254740993.0};

// The parser gives up beyond 1024 levels.
const int Depths[] = {2, 100, 1020, 1022, 1023, 1024, 1025, 5000};

/** Bytes that no UTF-8 text has, or that end one. */
const char* const BadText[] = {"\xFF", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                               "\x80", "\xE2\x82", "\r",           "\x01",
                               "\"",   "\\",       "\xEF\xBB\xBF"};
}  // namespace

QByteArray SettingsMutator::File(std::uint32_t number)
{
    Begin(number);
    const int kind = Below(10);
    if (kind == 0)
    {
        return RandomBytes(300);
    }
    QByteArray bytes = kind < 4 ? RandomObject() : AnySeed();
    // Some stay as they are.
    for (int i = Below(4); i > 0; --i)
    {
        Mutate(bytes);
    }
    return bytes;
}

void SettingsMutator::Mutate(QByteArray& bytes)
{
    switch (Below(8))
    {
        case 0:
            FlipBits(bytes);
            break;
        case 1:
            Truncate(bytes);
            break;
        case 2:
            Splice(bytes);
            break;
        case 3:
        case 4:
            SwapValue(bytes);
            break;
        case 5:
            Nest(bytes);
            break;
        case 6:
            DuplicateKey(bytes);
            break;
        default:
            BreakText(bytes);
            break;
    }
}

void SettingsMutator::SwapValue(QByteArray& bytes)
{
    const int colon = bytes.indexOf(':', Position(bytes));
    if (colon >= 0)
    {
        int end = colon + 1;
        while (end < bytes.size() && std::strchr(",}]\n", bytes[end]) == nullptr)
        {
            ++end;
        }
        bytes.replace(colon + 1, end - colon - 1, Any(Values));
    }
}

void SettingsMutator::Nest(QByteArray& bytes)
{
    const int depth = Any(Depths);
    const bool isArray = Below(2) == 0;
    const QByteArray open = isArray ? "[" : "{\"FlowH\":";
    const QByteArray inner = Any(Values);
    QByteArray nested = open.repeated(depth) + (inner.isEmpty() ? "1" : inner);
    if (Below(4) > 0)
    {
        nested += QByteArray(isArray ? "]" : "}").repeated(depth);
    }
    const int colon = bytes.indexOf(':', Position(bytes));
    bytes.insert(colon + 1, colon < 0 ? nested : nested + ", \"rest\": ");
}

void SettingsMutator::DuplicateKey(QByteArray& bytes)
{
    const int brace = bytes.indexOf('{', Position(bytes));
    if (brace >= 0)
    {
        const QByteArray key = QByteArray("\"") + Any(Keys) + "\": ";
        bytes.insert(brace + 1, key + Any(Values) + ", " + key + Any(Values) + ", ");
    }
}

void SettingsMutator::BreakText(QByteArray& bytes)
{
    // Best inside a string.
    const int quote = bytes.indexOf('"', Position(bytes));
    bytes.insert(quote + 1, Any(BadText));
}

QByteArray SettingsMutator::RandomObject()
{
    QJsonObject root;
    for (int i = Below(30); i > 0; --i)
    {
        root[Any(Keys)] = RandomValue(4);
    }
    const auto format = Below(2) == 0 ? QJsonDocument::Compact : QJsonDocument::Indented;
    return QJsonDocument(root).toJson(format);
}

QJsonValue SettingsMutator::RandomValue(int depth)
{
    switch (Below(depth > 0 ? 8 : 4))
    {
        case 0:
            return {};
        case 1:
            return Below(2) == 0;
        case 2:
            return Any(Numbers);
        case 3:
            return QString(Any(Texts));
        case 4:
        case 5:
        {
            QJsonArray array;
            for (int i = Below(5); i > 0; --i)
            {
                array.append(RandomValue(depth - 1));
            }
            return array;
        }
        default:
        {
            QJsonObject object;
            for (int i = Below(12); i > 0; --i)
            {
                object[Any(Keys)] = RandomValue(depth - 1);
            }
            return object;
        }
    }
}
