// SPDX-License-Identifier: MIT
#include "project/jsonaccess.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{
/** An object that holds @p value under "key" and something else beside it. */
QJsonObject With(const QJsonValue& value)
{
    return {{"key", value}, {"other", QJsonArray{1}}};
}

/** One row per JSON type; Undefined stands for a missing key. */
void AddRowPerType()
{
    QTest::addColumn<QJsonValue>("value");
    const auto row = [](const char* name, const QJsonValue& value)
    { QTest::newRow(name) << value; };
    row("missing", QJsonValue(QJsonValue::Undefined));
    row("null", QJsonValue());
    row("true", true);
    row("false", false);
    row("whole number", 42);
    row("the number 1", 1);
    row("the number 0", 0);
    row("fraction", 2.5);
    row("string", QStringLiteral("text"));
    row("empty string", QString());
    row("a number in a string", QStringLiteral("42"));
    row("array", QJsonArray{1, true, "x"});
    row("object", QJsonObject{{"key", 1}});
}

QJsonObject ObjectOf(const QJsonValue& value)
{
    return value.isUndefined() ? QJsonObject{{"other", 1}, {"Key", "capital"}} : With(value);
}
}  // namespace

class JsonAccessTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ReadersTakeTheirTypeOnly_data() { AddRowPerType(); }
    void ReadersTakeTheirTypeOnly();
    void TestsLookAtTheType_data() { AddRowPerType(); }
    void TestsLookAtTheType();
    void Integers_data();
    void Integers();
    void WritesIndentedAndSorted();
    void WritesAnEmptyObject();
    void WritingEmptiesTheFile();
    void WritesNothingWithoutDirectory();
    void Reads_data();
    void Reads();
    void ReadsAMissingFileAsEmpty();
    void ReadsADirectoryAsEmpty();
    void ReadsWithoutErrorRecord();
    void ReadsBackWhatItWrote();
    void ErrorPosition_data();
    void ErrorPosition();
    void ErrorPositionOfARealError();
    void ErrorTextOfAMissingFile();
    void ReportsNoError();

private:
    [[nodiscard]] QString Path(const QString& name) const { return Directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> Directory;
    std::unique_ptr<MessageGuard> Guard;
};

void JsonAccessTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Directory = std::make_unique<QTemporaryDir>();
    QVERIFY(Directory->isValid());
}

void JsonAccessTest::cleanup()
{
    QCOMPARE(Guard->TakeUnexpected(), QStringList());
}

void JsonAccessTest::ReadersTakeTheirTypeOnly()
{
    QFETCH(QJsonValue, value);
    const QJsonObject obj = ObjectOf(value);
    const bool isString = value.type() == QJsonValue::String;
    const bool isBool = value.type() == QJsonValue::Bool;
    const bool isNumber = value.type() == QJsonValue::Double;
    for (const QString defaultValue : {"", "default"})
    {
        QCOMPARE(JsonGetString(obj, "key", defaultValue),
                 isString ? value.toString() : defaultValue);
    }
    for (const bool defaultValue : {false, true})
    {
        QCOMPARE(JsonGetBool(obj, "key", defaultValue),
                 isBool ? value == QJsonValue(true) : defaultValue);
    }
    for (const double defaultValue : {0.0, -1.25})
    {
        QCOMPARE(JsonGetDouble(obj, "key", defaultValue),
                 isNumber ? value.toDouble() : defaultValue);
    }
    for (const int defaultValue : {0, -17})
    {
        const int number = value == QJsonValue(2.5) ? 0 : static_cast<int>(value.toDouble());
        QCOMPARE(JsonGetInt(obj, "key", defaultValue), isNumber ? number : defaultValue);
    }
}

void JsonAccessTest::TestsLookAtTheType()
{
    QFETCH(QJsonValue, value);
    const QJsonObject obj = ObjectOf(value);
    QCOMPARE(JsonHasString(obj, "key"), value.type() == QJsonValue::String);
    QCOMPARE(JsonHasNumber(obj, "key"), value.type() == QJsonValue::Double);
    QCOMPARE(JsonHasBool(obj, "key"), value.type() == QJsonValue::Bool);
}

void JsonAccessTest::Integers_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("expected");
    QTest::newRow("a fraction is 0") << 2.5 << 0;
    QTest::newRow("nearly whole is 0") << 800.0000001 << 0;
    QTest::newRow("a negative fraction is 0") << -0.5 << 0;
    QTest::newRow("negative") << -3.0 << -3;
    QTest::newRow("greatest") << 2147483647.0 << 2147483647;
    QTest::newRow("beyond the greatest is 0") << 2147483648.0 << 0;
    QTest::newRow("least") << -2147483648.0 << -2147483647 - 1;
    QTest::newRow("beyond the least is 0") << -2147483649.0 << 0;
    QTest::newRow("beyond 64 bits is 0") << 1e300 << 0;
}

void JsonAccessTest::Integers()
{
    QFETCH(double, number);
    QFETCH(int, expected);
    QCOMPARE(JsonGetInt(With(number), "key", 99), expected);
    // Also as a file has it.
    WriteBytes(Path("n.json"), "{\"key\": " + QByteArray::number(number, 'g', 17) + "}");
    QJsonObject obj;
    JsonReadFile(Path("n.json"), obj, nullptr);
    QCOMPARE(JsonGetDouble(obj, "key", 99.0), number);
    QCOMPARE(JsonGetInt(obj, "key", 99), expected);
}

void JsonAccessTest::WritesIndentedAndSorted()
{
    const QString path = Path("out.json");
    JsonWriteFile(path, {{"b", true},
                         {"a", 1.5},
                         {"Z", QJsonValue()},
                         {"number", 12},
                         {"text", QString::fromUtf8("ä\"\\\n")},
                         {"list", QJsonArray{1, QJsonObject(), QJsonObject{{"k", "v"}}}},
                         {"none", QJsonArray()}});
    QCOMPARE(ReadBytes(path), QByteArray("{\n"
                                         "    \"Z\": null,\n"
                                         "    \"a\": 1.5,\n"
                                         "    \"b\": true,\n"
                                         "    \"list\": [\n"
                                         "        1,\n"
                                         "        {\n"
                                         "        },\n"
                                         "        {\n"
                                         "            \"k\": \"v\"\n"
                                         "        }\n"
                                         "    ],\n"
                                         "    \"none\": [\n"
                                         "    ],\n"
                                         "    \"number\": 12,\n"
                                         "    \"text\": \"\xC3\xA4\\\"\\\\\\n\"\n"
                                         "}\n"));
}

void JsonAccessTest::WritesAnEmptyObject()
{
    JsonWriteFile(Path("out.json"), QJsonObject());
    QCOMPARE(ReadBytes(Path("out.json")), QByteArray("{\n}\n"));
}

void JsonAccessTest::WritingEmptiesTheFile()
{
    WriteBytes(Path("out.json"), QByteArray(10000, 'x'));
    JsonWriteFile(Path("out.json"), {{"a", 1}});
    QCOMPARE(ReadBytes(Path("out.json")), QByteArray("{\n    \"a\": 1\n}\n"));
}

void JsonAccessTest::WritesNothingWithoutDirectory()
{
    JsonWriteFile(Path("missing/out.json"), {{"a", 1}});
    QVERIFY(!QFileInfo::exists(Path("missing")));
    JsonWriteFile(Directory->path(), {{"a", 1}});  // a directory is no file
    QCOMPARE(QDir(Directory->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList());
}

void JsonAccessTest::Reads_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QJsonObject>("expected");
    QTest::addColumn<bool>("ok");
    QTest::newRow("object") << QByteArray("{\"a\": 1}") << QJsonObject{{"a", 1}} << true;
    QTest::newRow("CR LF") << QByteArray("{\r\n\"a\":\r\n1}\r\n") << QJsonObject{{"a", 1}} << true;
    QTest::newRow("UTF-8") << QByteArray("{\"\xC3\xA4\": \"\xE4\xB8\xAD\"}")
                           << QJsonObject{{QString(QChar(0xE4)), QString(QChar(0x4E2D))}} << true;
    QTest::newRow("empty file") << QByteArray() << QJsonObject() << false;
    QTest::newRow("syntax error") << QByteArray("{\"a\": 1,}") << QJsonObject() << false;
    QTest::newRow("cut off") << QByteArray("{\"a\": 1") << QJsonObject() << false;
    QTest::newRow("more behind it") << QByteArray("{\"a\": 1} x") << QJsonObject() << false;
    QTest::newRow("bytes that are no UTF-8")
        << QByteArray("{\"a\": \"\xFF\"}") << QJsonObject() << false;
    QTest::newRow("an array has no object") << QByteArray("[{\"a\": 1}]") << QJsonObject() << true;
}

void JsonAccessTest::Reads()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QJsonObject, expected);
    QFETCH(bool, ok);
    WriteBytes(Path("in.json"), bytes);
    QJsonObject obj{{"before", 1}};
    QJsonParseError error;
    JsonReadFile(Path("in.json"), obj, &error);
    QCOMPARE(obj, expected);
    QCOMPARE(error.error == QJsonParseError::NoError, ok);
    QCOMPARE(JsonReportError(error, Path("in.json")), ok);
    QCOMPARE(ReadBytes(Path("in.json")), bytes);
}

void JsonAccessTest::ReadsAMissingFileAsEmpty()
{
    QJsonObject obj{{"before", 1}};
    QJsonParseError error;
    JsonReadFile(Path("missing.json"), obj, &error);
    QCOMPARE(obj, QJsonObject());
    QVERIFY(!JsonReportError(error, Path("missing.json")));
    QVERIFY(!QFileInfo::exists(Path("missing.json")));
}

void JsonAccessTest::ReadsADirectoryAsEmpty()
{
    QJsonObject obj{{"before", 1}};
    QJsonParseError error;
    JsonReadFile(Directory->path(), obj, &error);
    QCOMPARE(obj, QJsonObject());
    QVERIFY(!JsonReportError(error, Directory->path()));
}

void JsonAccessTest::ReadsWithoutErrorRecord()
{
    WriteBytes(Path("bad.json"), "{");
    QJsonObject obj{{"before", 1}};
    JsonReadFile(Path("bad.json"), obj, nullptr);
    QCOMPARE(obj, QJsonObject());
}

void JsonAccessTest::ReadsBackWhatItWrote()
{
    const QJsonObject written{{"third", 1.0 / 3.0},
                              {"tiny", 5e-324},
                              {"huge", 1.7976931348623157e308},
                              {"text", QString::fromUtf8("\xF0\x9F\x8E\xA5 /a//b \t") + QChar(0)},
                              {"list", QJsonArray{QJsonArray(), false, -1}}};
    JsonWriteFile(Path("x"), written);
    QJsonObject read;
    QJsonParseError error;
    JsonReadFile(Path("x"), read, &error);
    QCOMPARE(read, written);
    QVERIFY(JsonReportError(error, Path("x")));
}

void JsonAccessTest::ErrorPosition_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QString>("position");
    const auto row = [](const char* name, const QByteArray& bytes, int offset, const char* position)
    { QTest::newRow(name) << bytes << offset << QString::fromLatin1(position); };
    row("offset 0 of an empty file", "", 0, "Line 1, Column 1: ");
    row("offset 5 of an empty file", "", 5, "Line 1, Column 6: ");
    row("offset 0", "abc", 0, "Line 1, Column 1: ");
    row("last character", "abc", 2, "Line 1, Column 3: ");
    row("beyond the end", "abc", 9, "Line 1, Column 10: ");
    row("in front of a line feed", "ab\ncd", 1, "Line 1, Column 2: ");
    // A line starts with the line feed in front of it, so its first character is in column 2.
    row("a line feed begins the next line", "ab\ncd", 2, "Line 2, Column 1: ");
    row("first character of the second line", "ab\ncd", 3, "Line 2, Column 2: ");
    row("beyond the end of the second line", "ab\ncd", 7, "Line 2, Column 6: ");
    row("behind the last line feed", "ab\n", 3, "Line 2, Column 2: ");
    row("a line feed at the start", "\nab", 0, "Line 2, Column 1: ");
    row("empty lines", "\n\n\nx", 3, "Line 4, Column 2: ");
    // The offset counts without CR, the walk with it.
    row("CR LF counts as two", "a\r\nb\r\ncd", 4, "Line 2, Column 3: ");
    row("CR alone is no line end", "a\rb", 2, "Line 1, Column 3: ");
    row("a zero byte ends the text", QByteArray("ab\0\ncd", 6), 5, "Line 1, Column 6: ");
    row("a zero byte in the second line", QByteArray("a\nb\0\nc", 6), 5, "Line 2, Column 5: ");
    row("a zero byte at the start", QByteArray("\0\n\n", 3), 2, "Line 1, Column 3: ");
    row("bytes and not characters", "\xC3\xA4\nx", 3, "Line 2, Column 2: ");
}

void JsonAccessTest::ErrorPosition()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, offset);
    QFETCH(QString, position);
    WriteBytes(Path("bad.json"), bytes);
    QJsonParseError error;
    error.offset = offset;
    error.error = QJsonParseError::MissingObject;
    QCOMPARE(JsonErrorText(error, Path("bad.json")),
             position + error.errorString() + " (W:Position might be unprecise!)");
    QVERIFY(!JsonReportError(error, Path("bad.json")));
}

void JsonAccessTest::ErrorPositionOfARealError()
{
    // The parser stops at the word, in the third line.
    WriteBytes(Path("bad.json"), "{\n  \"a\": 1,\n  word\n}\n");
    QJsonObject obj;
    QJsonParseError error;
    JsonReadFile(Path("bad.json"), obj, &error);
    const QString text = JsonErrorText(error, Path("bad.json"));
    QVERIFY2(text.startsWith("Line 3, Column "), qPrintable(text));
}

void JsonAccessTest::ErrorTextOfAMissingFile()
{
    QJsonParseError error;
    error.offset = 0;
    error.error = QJsonParseError::IllegalValue;
    QCOMPARE(JsonErrorText(error, Path("missing.json")),
             "Line 1, Column 1: " + error.errorString() + " (W:Position might be unprecise!)");
    QVERIFY(!JsonReportError(error, Path("missing.json")));
    QVERIFY(!QFileInfo::exists(Path("missing.json")));
}

void JsonAccessTest::ReportsNoError()
{
    QJsonParseError error;
    error.error = QJsonParseError::NoError;
    error.offset = 0;
    QVERIFY(JsonReportError(error, Path("missing.json")));
    QVERIFY(JsonReportError(error, QString()));
}

QTEST_APPLESS_MAIN(JsonAccessTest)
#include "jsonaccess_test.moc"
