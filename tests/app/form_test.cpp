// SPDX-License-Identifier: MIT
#include "app/mainwindow.h"
#include "support/freshhost.h"
#include "support/testhome.h"

#include "ui_mainwindow.h"

#include <QTest>

namespace
{
const TestHome Home;

/** The main window's form on a bare window: what is in it before the program sets anything. */
struct BareForm
{
    BareForm() { Form.setupUi(&Frame); }

    template <typename Object>
    [[nodiscard]] Object* Find(const char* name) const
    {
        auto* object = Frame.findChild<Object*>(QString::fromLatin1(name));
        if (object == nullptr)
        {
            qFatal("the form has no %s", name);
        }
        return object;
    }

    [[nodiscard]] double Number(const char* field, const char* property) const
    {
        return Find<QAbstractSpinBox>(field)->property(property).toDouble();
    }

    QMainWindow Frame;
    Ui::MainWindow Form;
};

/** Texts of the entries, "-" for separators. */
QStringList Entries(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* action : menu->actions())
    {
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    }
    return texts;
}

QStringList Names(const QMenu* menu)
{
    QStringList names;
    for (const QAction* action : menu->actions())
    {
        if (!action->isSeparator())
        {
            names.append(action->objectName());
        }
    }
    return names;
}
}  // namespace

/** The form as its designer made it; what the user sees of it is another test. */
class FormTest : public QObject
{
    Q_OBJECT

private slots:
    void Window();
    void Tabs_data();
    void Tabs();
    void TabWidget();
    void NumberFields_data();
    void NumberFields();
    void WindowWidensTheRescaleRange();
    void CheckBoxes();
    void WarpType();
    void Groups_data();
    void Groups();
    void JobButtons_data();
    void JobButtons();
    void FileFields_data();
    void FileFields();
    void MenuBar();
    void Menus_data();
    void Menus();
    void ActionsOutsideTheMenus_data();
    void ActionsOutsideTheMenus();
    void ExitClosesTheWindow();
    void ScrollAreas_data();
    void ScrollAreas();
};

void FormTest::Window()
{
    const BareForm form;
    QCOMPARE(form.Frame.size(), QSize(1018, 755));
    QCOMPARE(form.Frame.locale(), QLocale(QLocale::English, QLocale::Austria));
    const QString path = QStringLiteral(":/l/Logos/logo-kvar-klein.png");
    const QSize size = QImage(path).size();
    QVERIFY(!size.isEmpty());
    QCOMPARE(form.Frame.windowIcon().pixmap(size).toImage(), QIcon(path).pixmap(size).toImage());
}

void FormTest::Tabs_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << "Settings"
                       << "Settings";
    QTest::newRow("1") << 1 << "tabXAxis"
                       << "Horizontal Axis";
    QTest::newRow("2") << 2 << "tabYAxis"
                       << "Vertical Axis";
    QTest::newRow("3") << 3 << "tabAngle"
                       << "Rotation";
    QTest::newRow("4") << 4 << "tabPlayer"
                       << "Player";
}

void FormTest::Tabs()
{
    QFETCH(int, index);
    QFETCH(QString, page);
    QFETCH(QString, text);
    const BareForm form;
    const QTabWidget* tabs = form.Form.tabWidgetMain;
    QCOMPARE(tabs->widget(index)->objectName(), page);
    QCOMPARE(tabs->tabText(index), text);
}

void FormTest::TabWidget()
{
    const BareForm form;
    const auto* tabs = form.Find<QTabWidget>("tabWidgetMain");
    QCOMPARE(tabs->count(), 5);
    QCOMPARE(tabs->currentIndex(), 0);
    QVERIFY(!tabs->usesScrollButtons());
    QVERIFY(tabs->tabBarAutoHide());
    QCOMPARE(tabs->minimumWidth(), 1000);
}

void FormTest::NumberFields_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("start");
    const auto add =
        [](const char* field, double minimum, double maximum, double step, double start)
    { QTest::newRow(field) << QByteArray(field) << minimum << maximum << step << start; };
    add("spinBoxMaxTrackingPoints", 20, 5000, 1, 200);
    add("doubleSpinBoxZoom", 1.0, 10000.0, 1.0, 100.0);
    add("spinBoxRescaleXAxis", 60, 16000, 1, 99);  // the window sets its own limits
    add("spinBoxRescaleYAxis", 60, 16000, 1, 99);
    add("spinBoxExpOffsetH", -4000, 4000, 1, 0);
    add("spinBoxExpOffsetV", -4000, 4000, 1, 0);
    add("doubleSpinBoxExpRot", -180.0, 180.0, 0.1, 0.0);
}

void FormTest::NumberFields()
{
    QFETCH(QByteArray, field);
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(double, step);
    QFETCH(double, start);
    const BareForm form;
    const char* name = field.constData();
    QCOMPARE(form.Number(name, "minimum"), minimum);
    QCOMPARE(form.Number(name, "maximum"), maximum);
    QCOMPARE(form.Number(name, "singleStep"), step);
    QCOMPARE(form.Number(name, "value"), start);
    const Qt::Alignment alignment = form.Find<QAbstractSpinBox>(name)->alignment();
    QCOMPARE(int(alignment & Qt::AlignHorizontal_Mask & ~Qt::AlignAbsolute), int(Qt::AlignRight));
}

void FormTest::WindowWidensTheRescaleRange()
{
    const FreshHost host;
    const MainWindow window(nullptr, QString());
    for (const char* name : {"spinBoxRescaleXAxis", "spinBoxRescaleYAxis"})
    {
        const auto* field = window.findChild<QSpinBox*>(QString::fromLatin1(name));
        QCOMPARE(field->minimum(), 50);
        QCOMPARE(field->maximum(), 20000);
    }
}

void FormTest::CheckBoxes()
{
    const BareForm form;
    const auto* zoom = form.Find<QCheckBox>("checkBoxEnableZoom");
    const auto* rescale = form.Find<QCheckBox>("checkBoxRescale");
    QCOMPARE(zoom->text(), QStringLiteral("Use Crop Zoom in %"));
    QCOMPARE(rescale->text(), QStringLiteral("Rescale to H:"));
    QVERIFY(!zoom->isChecked());
    QVERIFY(!rescale->isChecked());
}

void FormTest::WarpType()
{
    const BareForm form;
    const auto* box = form.Find<QComboBox>("comboBoxWarpType");
    QStringList items;
    for (int i = 0; i < box->count(); ++i)
    {
        items.append(box->itemText(i));
    }
    QCOMPARE(items, QStringList({"Position", "Position & Rotate", "Perspective", "Homography"}));
    QCOMPARE(box->maxVisibleItems(), 4);
}

void FormTest::Groups_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("parent");
    const auto add = [](const char* name, const char* title, const char* parent)
    { QTest::newRow(name) << QByteArray(name) << title << parent; };
    add("groupBox", "Stabilize Settings", "Settings");
    add("groupBox_3", "Global Settings", "groupBox");
    add("groupBoxExport", "Export", "Settings");
    add("groupBoxGeneral", "File Settings", "Settings");
    add("groupBox_2", "Generate", "Settings");
    add("groupBoxLog", "Logging", "Settings");
}

void FormTest::Groups()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, title);
    QFETCH(QString, parent);
    const BareForm form;
    const auto* group = form.Find<QGroupBox>(name.constData());
    QCOMPARE(group->title(), title);
    QCOMPARE(group->parentWidget()->objectName(), parent);
}

void FormTest::JobButtons_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    const auto add = [](const char* name, const char* text)
    { QTest::newRow(name) << QByteArray(name) << text; };
    add("pushButtonAbort", "Abort");
    add("pushButtonTest", "Test");
    add("pushButtonGenerateAll", "Generate All");
    add("pushButtonAnalyseTrack", "Analyze Source Video");
    add("pushButtonReadTrack", "Read Analyzed Data");
    add("pushButtonCalculateTrack", "Calculate Camera Path");
    add("pushButtonExportVideo", "Export Stabilized Video");
}

void FormTest::JobButtons()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    const BareForm form;
    const auto* button = form.Find<QPushButton>(name.constData());
    QCOMPARE(button->text(), text);
    QCOMPARE(button->parentWidget()->objectName(), QStringLiteral("groupBox_2"));
}

void FormTest::FileFields_data()
{
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<QByteArray>("button");
    const auto add = [](const char* field, const char* button)
    { QTest::newRow(field) << QByteArray(field) << QByteArray(button); };
    add("lineEditSourceVideo", "pushButtonSourceVideo");
    add("lineEditTrackingPathFile", "pushButtonTrackingFile");
    add("lineEditStabilizeFile", "pushButtonStabilizeFile");
    add("lineEditExportVideo", "pushButtonExportVideoFile");
}

void FormTest::FileFields()
{
    QFETCH(QByteArray, field);
    QFETCH(QByteArray, button);
    const BareForm form;
    QCOMPARE(form.Find<QLineEdit>(field.constData())->parentWidget()->objectName(),
             QStringLiteral("groupBoxGeneral"));
    QCOMPARE(form.Find<QPushButton>(button.constData())->text(), QStringLiteral("Choose"));
    QCOMPARE(form.Find<QPushButton>(button.constData())->parentWidget()->objectName(),
             QStringLiteral("groupBoxGeneral"));
}

void FormTest::MenuBar()
{
    const BareForm form;
    QStringList menus;
    for (const QAction* action : form.Frame.menuBar()->actions())
    {
        menus.append(action->menu()->objectName() + QLatin1Char(' ') + action->menu()->title());
    }
    QCOMPARE(menus, QStringList({"menumain Main", "menuSettings Settings", "menuHelp Help"}));
}

void FormTest::Menus_data()
{
    QTest::addColumn<QByteArray>("menu");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("Main; the window adds the recent projects")
        << QByteArray("menumain")
        << QStringList({"New Project", "-", "Open Project", "Save Project", "Save Project as", "-",
                        "-", "Exit"})
        << QStringList({"actionnew_project", "actionopen_project", "actionsave_project",
                        "actionsave_project_as", "actionexit"});
    QTest::newRow("Settings")
        << QByteArray("menuSettings")
        << QStringList({"File/Directory Settings", "Default Settings", "Look and Feel"})
        << QStringList({"actionFile_Settings", "actionDefault_Settings", "actionLook_Feel"});
    QTest::newRow("Help") << QByteArray("menuHelp")
                          << QStringList({"About Molvane", "About Qt", "About OpenCV",
                                          "About Codecs", "Help"})
                          << QStringList({"actionAbout", "actionAbout_Qt", "actionAbout_OpenCV",
                                          "actionAbout_Codecs", "actionHelp"});
}

void FormTest::Menus()
{
    QFETCH(QByteArray, menu);
    QFETCH(QStringList, texts);
    QFETCH(QStringList, names);
    const BareForm form;
    QCOMPARE(Entries(form.Find<QMenu>(menu.constData())), texts);
    QCOMPARE(Names(form.Find<QMenu>(menu.constData())), names);
}

void FormTest::ActionsOutsideTheMenus_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("recent") << QByteArray("actionRecent") << "Recent Projects";
    QTest::newRow("nameless") << QByteArray("action_4") << "";
    QTest::newRow("global") << QByteArray("actionglobal_settings") << "Global Settings";
    QTest::newRow("project") << QByteArray("actionproject_settings") << "Project Settings";
}

void FormTest::ActionsOutsideTheMenus()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, text);
    const BareForm form;
    const auto* action = form.Find<QAction>(name.constData());
    QVERIFY(text.isEmpty() || action->text() == text);
    QVERIFY(action->associatedWidgets().isEmpty());
}

void FormTest::ExitClosesTheWindow()
{
    BareForm form;
    form.Frame.show();
    form.Find<QAction>("actionexit")->trigger();
    QVERIFY(!form.Frame.isVisible());
}

void FormTest::ScrollAreas_data()
{
    QTest::addColumn<QByteArray>("area");
    QTest::addColumn<QString>("page");
    QTest::newRow("horizontal") << QByteArray("scrollAreaXAxis") << "tabXAxis";
    QTest::newRow("vertical") << QByteArray("scrollAreaYAxis") << "tabYAxis";
    QTest::newRow("rotation") << QByteArray("scrollAreaAngle") << "tabAngle";
    QTest::newRow("player") << QByteArray("scrollAreaPlay") << "tabPlayer";
}

void FormTest::ScrollAreas()
{
    QFETCH(QByteArray, area);
    QFETCH(QString, page);
    const BareForm form;
    QCOMPARE(form.Find<QScrollArea>(area.constData())->parentWidget()->objectName(), page);
}

QTEST_MAIN(FormTest)
#include "form_test.moc"
