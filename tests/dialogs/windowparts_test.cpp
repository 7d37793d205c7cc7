// SPDX-License-Identifier: MIT
#include "dialogs/windowparts.h"

#include "app/testwindow.h"
#include "batch/jobstate.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "dialogs/dialogguard.h"
#include "graphs/graphwindow.h"
#include "player/previewplayer.h"
#include "stabilizer/camerapath.h"
#include "support/testhome.h"

#include <qwt_plot.h>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QScrollArea>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include <memory>
#include <thread>

namespace
{
const TestHome Home;

/** Everything on a window that carries a text with a possible mnemonic. */
QStringList TextsOf(const QWidget& window)
{
    QStringList texts;
    for (const QObject* object : window.findChildren<QObject*>())
    {
        texts += {object->property("text").toString(), object->property("title").toString()};
        if (const auto* tabs = qobject_cast<const QTabBar*>(object))
        {
            for (int i = 0; i < tabs->count(); ++i)
            {
                texts.append(tabs->tabText(i));
            }
        }
    }
    texts.removeAll(QString());
    return texts;
}
}  // namespace

/** How the finished window is wired. */
class WindowPartsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void ScrollAreasHoldTheirWidgets_data();
    void ScrollAreasHoldTheirWidgets();
    void GraphTitles_data();
    void GraphTitles();
    void EachGraphCalculatesOnce_data();
    void EachGraphCalculatesOnce();
    void ClickOnATabIsTakenOnce();
    void EndOfAJobIsTakenOnce();
    void EndOfAJobOnThisThreadComesAtOnce();
    void WarpTypeIsFixed();
    void ActionsThatDoNothing_data();
    void ActionsThatDoNothing();
    void InformationDialogsStandAlone();
    void NoTextHasAMnemonic();
    void NothingTakesADrop();

private:
    [[nodiscard]] QWidget* In(const char* area) const
    {
        return Window->Find<QScrollArea>(area)->widget();
    }
    static void AddGraphRows();

    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestWindow> Window;
};

void WindowPartsTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Window = std::make_unique<TestWindow>();
}

void WindowPartsTest::cleanup()
{
    Window.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

void WindowPartsTest::AddGraphRows()
{
    QTest::addColumn<QByteArray>("area");
    QTest::addColumn<QString>("title");
    QTest::newRow("horizontal") << QByteArray("scrollAreaXAxis")
                                << "right <- Horizontal pixel movement -> left";
    QTest::newRow("vertical") << QByteArray("scrollAreaYAxis")
                              << "down <- Vertical pixel movement -> up";
    QTest::newRow("rotation") << QByteArray("scrollAreaAngle")
                              << QStringLiteral("Rotation in 360°");
}

void WindowPartsTest::ScrollAreasHoldTheirWidgets_data()
{
    QTest::addColumn<QByteArray>("area");
    QTest::addColumn<QString>("name");
    QTest::newRow("horizontal") << QByteArray("scrollAreaXAxis") << "GraphWindow";
    QTest::newRow("vertical") << QByteArray("scrollAreaYAxis") << "GraphWindow";
    QTest::newRow("rotation") << QByteArray("scrollAreaAngle") << "GraphWindow";
    QTest::newRow("player") << QByteArray("scrollAreaPlay") << "PreviewPlayer";
}

void WindowPartsTest::ScrollAreasHoldTheirWidgets()
{
    QFETCH(QByteArray, area);
    QFETCH(QString, name);
    QVERIFY(In(area.constData()) != nullptr);
    QCOMPARE(ClassOf(*In(area.constData())), name);
    QCOMPARE((*Window)->findChildren<GraphWindow*>().size(), 3);
    QCOMPARE((*Window)->findChildren<PreviewPlayer*>().size(), 1);
}

void WindowPartsTest::GraphTitles_data()
{
    AddGraphRows();
}

void WindowPartsTest::GraphTitles()
{
    QFETCH(QByteArray, area);
    QFETCH(QString, title);
    const auto* plot = In(area.constData())->findChild<QwtPlot*>();
    QCOMPARE(plot->axisTitle(QwtPlot::yLeft).text(), title);
}

void WindowPartsTest::EachGraphCalculatesOnce_data()
{
    AddGraphRows();
}

void WindowPartsTest::EachGraphCalculatesOnce()
{
    QFETCH(QByteArray, area);
    auto* graph = qobject_cast<GraphWindow*>(In(area.constData()));
    const QStringList before = Window->Log();
    emit graph->CalculateCameraPath();
    // Nothing has been analysed; the try alone is told, and the window shows its end.
    QCOMPARE(Window->Log().mid(before.size()), QStringList("Error    No data to smooth!"));
    QVERIFY(Window->IsEnabled("pushButtonExportVideo"));
}

void WindowPartsTest::ClickOnATabIsTakenOnce()
{
    // The first field comes into the project by the click that leaves its tab.
    Window->SetNumber("spinBoxRescaleXAxis", 1234);
    QCOMPARE(PathHorizontal.Export->ExpResH, 1920);
    Window->ClickTab(1);
    QCOMPARE(PathHorizontal.Export->ExpResH, 1234);
}

void WindowPartsTest::EndOfAJobIsTakenOnce()
{
    Window->Commit();  // more commits make no more of the connection
    Window->Commit();
    QCoreApplication::processEvents();
    int calls = 0;
    const Watch watch(Window->operator->(), [&calls](const QEvent& event)
                      { calls += event.type() == QEvent::MetaCall ? 1 : 0; });
    OpCVThread* thread = ProgramHost.GetThread();
    // As from the worker: by way of the queue.
    std::thread([thread] { emit thread->SignalFinished(JobExport); }).join();
    QCOMPARE(Window->Word(), QStringLiteral("IDLE"));
    QTRY_COMPARE(Window->Word(), QStringLiteral("EXPORTING"));
    QCoreApplication::processEvents();
    QCOMPARE(calls, 1);
}

void WindowPartsTest::EndOfAJobOnThisThreadComesAtOnce()
{
    emit ProgramHost.GetThread()->SignalFinished(JobExport);
    QCOMPARE(Window->Word(), QStringLiteral("EXPORTING"));
}

void WindowPartsTest::WarpTypeIsFixed()
{
    const auto* box = Window->Find<QComboBox>("comboBoxWarpType");
    QCOMPARE(box->currentText(), QStringLiteral("Position & Rotate"));
    QVERIFY(!box->isEnabled());
}

void WindowPartsTest::ActionsThatDoNothing_data()
{
    QTest::addColumn<QByteArray>("action");
    for (const char* action :
         {"actionRecent", "action_4", "actionglobal_settings", "actionproject_settings",
          "actionDefault_Settings", "actionLook_Feel"})
    {
        QTest::newRow(action) << QByteArray(action);
    }
}

void WindowPartsTest::ActionsThatDoNothing()
{
    QFETCH(QByteArray, action);
    const QStringList log = Window->Log();
    const QString title = (*Window)->windowTitle();
    Window->Find<QAction>(action.constData())->trigger();
    QCOMPARE(Window->Log(), log);
    QCOMPARE((*Window)->windowTitle(), title);
    for (const QWidget* shown : QApplication::topLevelWidgets())
    {
        QVERIFY2(!shown->isVisible() || shown == Window->operator->(), action.constData());
    }
}

void WindowPartsTest::InformationDialogsStandAlone()
{
    QStringList names;
    for (const QWidget* dialog : DialogsOfTheWindow())
    {
        QVERIFY(dialog->parent() == nullptr);
        QVERIFY(!dialog->isVisible());
        names.append(ClassOf(*dialog));
    }
    names.sort();
    QStringList expected = OwnDialogs;
    expected.sort();
    QCOMPARE(names, expected);
}

void WindowPartsTest::NoTextHasAMnemonic()
{
    QList<const QWidget*> windows = {Window->operator->()};
    for (const QWidget* dialog : DialogsOfTheWindow())
    {
        windows.append(dialog);
    }
    int seen = 0;
    for (const QWidget* window : windows)
    {
        for (const QString& text : TextsOf(*window))
        {
            ++seen;
            QVERIFY2(!text.contains(QLatin1Char('&')), qPrintable(text));
        }
    }
    QVERIFY2(seen > 100, qPrintable(QString::number(seen)));
}

/** But for the text fields, which take a text as they do everywhere. */
void WindowPartsTest::NothingTakesADrop()
{
    QVERIFY(!(*Window)->acceptDrops());
    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(QStringLiteral("/videos/clip.mov"))});
    const QList<QWidget*> targets = {Window->operator->(),
                                     Window->Find<QTabWidget>("tabWidgetMain"),
                                     Window->Find<QWidget>("Settings"),
                                     Window->Find<QWidget>("groupBoxGeneral"),
                                     Window->Find<QWidget>("plainTextEdit"),
                                     In("scrollAreaXAxis"),
                                     In("scrollAreaXAxis")->findChild<QwtPlot*>()->canvas(),
                                     In("scrollAreaPlay")};
    for (QWidget* target : targets)
    {
        QDragEnterEvent drag(QPoint(5, 5), Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &drag);
        QVERIFY2(!drag.isAccepted(), qPrintable(target->objectName()));
    }
}

QTEST_MAIN(WindowPartsTest)
#include "windowparts_test.moc"
