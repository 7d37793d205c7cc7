// SPDX-License-Identifier: MIT
#include "app/log.h"
#include "support/files.h"
#include "support/messageguard.h"

#include <QCheckBox>
#include <QDir>
#include <QJsonObject>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{
// LogToFile is private and nothing reads it yet. An explicit instantiation may name private
// members, so this pointer to it is plain C++ and needs nothing in the class.
bool Log::*PrivateLogToFile = nullptr;

template <bool Log::*Field>
struct FieldTaker
{
    struct Setter
    {
        Setter() { PrivateLogToFile = Field; }
    };
    static Setter Instance;
};
template <bool Log::*Field>
typename FieldTaker<Field>::Setter FieldTaker<Field>::Instance;
template struct FieldTaker<&Log::LogToFile>;

QJsonObject StartSettings()
{
    return {{"EnableLogging", false},   {"LogFileName", ""},    {"ShowInitLogs", true},
            {"ShowRunLogs", true},      {"ShowWarnings", true}, {"ShowErrors", true},
            {"Entry Count Limit", 1000}};
}

QJsonObject OtherSettings()
{
    return {{"EnableLogging", true}, {"LogFileName", "/l/%1.log"}, {"ShowInitLogs", false},
            {"ShowRunLogs", false},  {"ShowWarnings", false},      {"ShowErrors", false},
            {"Entry Count Limit", 7}};
}

QJsonObject Written(const Log& log)
{
    QJsonObject obj;
    log.WriteSettings(obj);
    return obj;
}
}  // namespace

/** The settings of the log as an object, and the log file. */
class LogSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void WritesStartValues();
    void WritesBesideOtherKeys();
    void ReadsAndWritesAllFields();
    void ReadsWithoutWindow();
    void EachKey_data();
    void EachKey();
    void LogToFile_data();
    void LogToFile();
    void ReadingShowsTheFilters();
    void ReadingFilters();
    void EntryLimit_data();
    void EntryLimit();
    void HostileLimit_data();
    void HostileLimit();
    void LogFileName_data();
    void LogFileName();
    void LogFileWithoutDirectory();

private:
    [[nodiscard]] QCheckBox* Box(const char* name) const
    {
        return Window->findChild<QCheckBox*>(name);
    }
    [[nodiscard]] QString Text() const
    {
        return Window->findChild<QPlainTextEdit*>("plainTextEdit")->toPlainText();
    }

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<Log> Messages;
    std::unique_ptr<QWidget> Window;
};

void LogSettingsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Messages = std::make_unique<Log>();
    Window = std::make_unique<QWidget>();
    Messages->Setup(Window.get());
}

void LogSettingsTest::cleanup()
{
    Window.reset();
    Messages.reset();
    QCOMPARE(Guard->TakeUnexpected(), QStringList());
}

void LogSettingsTest::WritesStartValues()
{
    QCOMPARE(Written(*Messages), StartSettings());
    QCOMPARE(Written(Log()), StartSettings());
}

void LogSettingsTest::WritesBesideOtherKeys()
{
    QJsonObject obj{{"other", 1}, {"ShowErrors", "old"}};
    Messages->WriteSettings(obj);
    QJsonObject expected = StartSettings();
    expected["other"] = 1;
    QCOMPARE(obj, expected);
}

void LogSettingsTest::ReadsAndWritesAllFields()
{
    Messages->ReadSettings(OtherSettings());
    QCOMPARE(Written(*Messages), OtherSettings());
    Messages->ReadSettings(QJsonObject());
    QCOMPARE(Written(*Messages), StartSettings());
}

void LogSettingsTest::ReadsWithoutWindow()
{
    Log early;
    early.ReadSettings(OtherSettings());
    QCOMPARE(Written(early), OtherSettings());
    Window.reset();
    Messages->ReadSettings(OtherSettings());
    QCOMPARE(Written(*Messages), OtherSettings());
}

void LogSettingsTest::EachKey_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QJsonValue>("given");
    QTest::addColumn<QJsonValue>("expected");
    const QJsonObject start = StartSettings();
    const QJsonObject other = OtherSettings();
    const QJsonObject wrong{{"EnableLogging", 1},      {"LogFileName", 5},
                            {"ShowInitLogs", 0},       {"ShowRunLogs", 0},
                            {"ShowWarnings", "false"}, {"ShowErrors", ""},
                            {"Entry Count Limit", "7"}};
    for (const QString& key : start.keys())
    {
        const QByteArray name = key.toLatin1();
        QTest::newRow(name + " given") << key << other[key] << other[key];
        QTest::newRow(name + " of another type") << key << wrong[key] << start[key];
    }
    const QString limit = "Entry Count Limit";
    QTest::newRow("a fraction as limit") << limit << QJsonValue(2.5) << QJsonValue(0);
}

void LogSettingsTest::EachKey()
{
    QFETCH(QString, key);
    QFETCH(QJsonValue, given);
    QFETCH(QJsonValue, expected);
    Messages->ReadSettings({{key, given}});
    QJsonObject all = StartSettings();
    all[key] = expected;
    QCOMPARE(Written(*Messages), all);
}

void LogSettingsTest::LogToFile_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");
    QTest::newRow("enabled, two characters") << true << "ab" << true;
    QTest::newRow("enabled, one character") << true << "a" << false;
    QTest::newRow("enabled, no name") << true << "" << false;
    QTest::newRow("not enabled") << false << "name" << false;
}

void LogSettingsTest::LogToFile()
{
    QFETCH(bool, enabled);
    QFETCH(QString, name);
    QFETCH(bool, expected);
    QVERIFY(!(Messages.get()->*PrivateLogToFile));
    for (const bool before : {false, true})
    {
        Messages.get()->*PrivateLogToFile = before;
        Messages->ReadSettings({{"EnableLogging", enabled}, {"LogFileName", name}});
        QCOMPARE(Messages.get()->*PrivateLogToFile, expected);
        // The wish stays, whatever the name.
        QCOMPARE(Written(*Messages)["EnableLogging"], QJsonValue(enabled));
    }
}

void LogSettingsTest::ReadingShowsTheFilters()
{
    const QMap<const char*, QString> boxes{{"checkBoxInit", "ShowInitLogs"},
                                           {"checkBoxRunning", "ShowRunLogs"},
                                           {"checkBoxWarnings", "ShowWarnings"},
                                           {"checkBoxErrors", "ShowErrors"}};
    Box("checkBoxDebug")->setChecked(true);
    for (auto off = boxes.cbegin(); off != boxes.cend(); ++off)
    {
        Messages->ReadSettings({{off.value(), false}});
        for (auto box = boxes.cbegin(); box != boxes.cend(); ++box)
        {
            QCOMPARE(Box(box.key())->isChecked(), box != off);
        }
        QVERIFY(!Box("checkBoxDebug")->isChecked());
    }
}

void LogSettingsTest::ReadingFilters()
{
    Messages->Add(1, "before");
    Messages->ReadSettings({{"ShowRunLogs", false}});
    Messages->Add(1, "hidden");
    Messages->Add(3, "shown");
    // What stands in the text area stays until a filter is clicked.
    QCOMPARE(Text(), QString("Run      before\nError    shown"));
    QCOMPARE(Window->findChild<QLabel*>("labelLog")->text(), QString("shown"));
    Box("checkBoxInit")->click();
    QCOMPARE(Text(), QString("Error    shown"));
}

void LogSettingsTest::EntryLimit_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<QString>("kept");
    QTest::newRow("1") << 1 << "Error    c";
    QTest::newRow("2") << 2 << "Error    b\nError    c";
    QTest::newRow("3") << 3 << "Error    a\nError    b\nError    c";
    QTest::newRow("4") << 4 << "Error    a\nError    b\nError    c";
}

void LogSettingsTest::EntryLimit()
{
    QFETCH(int, limit);
    QFETCH(QString, kept);
    Messages->ReadSettings({{"Entry Count Limit", limit}});
    for (const char* text : {"a", "b", "c"})
    {
        Messages->Add(3, text);
    }
    QCOMPARE(Text(), QString("Error    a\nError    b\nError    c"));
    Box("checkBoxInit")->click();
    QCOMPARE(Text(), kept);
}

void LogSettingsTest::HostileLimit_data()
{
    QTest::addColumn<QJsonValue>("limit");
    QTest::newRow("0") << QJsonValue(0);
    QTest::newRow("-1") << QJsonValue(-1);
    QTest::newRow("least") << QJsonValue(-2147483648.0);
    QTest::newRow("beyond 32 bits") << QJsonValue(1e12);
    QTest::newRow("a fraction") << QJsonValue(0.5);
}

void LogSettingsTest::HostileLimit()
{
    QFETCH(QJsonValue, limit);
    Messages->Add(1, "before");
    Messages->ReadSettings({{"Entry Count Limit", limit}});
    Messages->Add(1, "behind");
    QCOMPARE(Text(), QString("Run      before\nRun      behind"));
    QCOMPARE(Window->findChild<QLabel*>("labelLog")->text(), QString("behind"));
    for (int i = 0; i < 2; ++i)
    {
        Box("checkBoxInit")->click();
        QCOMPARE(Text(), QString());  // nothing is kept
    }
    Messages->ReadSettings(QJsonObject());
    Messages->Add(1, "kept again");
    Box("checkBoxInit")->click();
    QCOMPARE(Text(), QString("Run      kept again"));
}

void LogSettingsTest::LogFileName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isWritten");
    QTest::newRow("no name") << "" << false;
    QTest::newRow("1 character") << "a" << false;
    QTest::newRow("2 characters") << "ab" << false;
    QTest::newRow("3 characters") << "abc" << true;
    QTest::newRow("percent signs stay") << "100%1 %2" << true;
}

void LogSettingsTest::LogFileName()
{
    QFETCH(QString, name);
    QFETCH(bool, isWritten);
    const QTemporaryDir directory;
    const QString former = QDir::currentPath();
    QVERIFY(QDir::setCurrent(directory.path()));
    const QDateTime start = QDateTime::currentDateTime().addSecs(-1);  // names have no fractions
    Messages->WriteLogFile(name, {{"a", 1}});
    const QDateTime end = QDateTime::currentDateTime();
    QVERIFY(QDir::setCurrent(former));

    const QStringList files =
        QDir(directory.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    QCOMPARE(files.size(), isWritten ? 1 : 0);
    if (isWritten)
    {
        QVERIFY2(files[0].startsWith(name + "_D_"), qPrintable(files[0]));
        const QString stamp = files[0].mid(name.size());
        const QRegularExpression form(R"(^_D_\d{4}_\d{2}_\d{2}_T_\d{2}_\d{2}_\d{2}\.json$)");
        QVERIFY2(form.match(stamp).hasMatch(), qPrintable(stamp));
        const QDateTime time =
            QDateTime::fromString(stamp.mid(3, 10) + ' ' + stamp.mid(16, 8), "yyyy_MM_dd hh_mm_ss");
        QVERIFY2(start <= time && time <= end, qPrintable(stamp));
        QCOMPARE(ReadBytes(directory.filePath(files[0])), QByteArray("{\n    \"a\": 1\n}\n"));
    }
}

void LogSettingsTest::LogFileWithoutDirectory()
{
    const QTemporaryDir directory;
    Messages->WriteLogFile(directory.filePath("missing/log"), {{"a", 1}});
    QVERIFY(QDir(directory.path()).isEmpty());
    QCOMPARE(Text(), QString());
}

QTEST_MAIN(LogSettingsTest)
#include "logsettings_test.moc"
