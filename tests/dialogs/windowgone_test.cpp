// SPDX-License-Identifier: MIT
#include "app/jobclips.h"
#include "app/testwindow.h"
#include "batch/jobstate.h"
#include "batch/opcvthread.h"
#include "batch/stabilizerhost.h"
#include "dialogs/dialogguard.h"
#include "dialogs/windowparts.h"
#include "project/dirsettings.h"
#include "support/loglines.h"
#include "support/testhome.h"

#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace
{
const TestHome Home;
}  // namespace

/** How the window comes apart. */
class WindowGoneTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void PlayerClosesBeforeTheJobStops();
    void PartsGoInReverseOrder();
    void RecentMenuLivesOn();

private:
    [[nodiscard]] QWidget* In(const char* area) const
    {
        return Window->Find<QScrollArea>(area)->widget();
    }
    [[nodiscard]] QMenu* RecentMenu() const;

    QTemporaryDir Clips;
    QString Long;  ///< path
    std::unique_ptr<MessageGuard> Guard;
    std::unique_ptr<TestWindow> Window;
};

void WindowGoneTest::initTestCase()
{
    Long = Clips.filePath(QStringLiteral("long.avi"));
    QVERIFY(WriteLongClip(Long));
}

void WindowGoneTest::init()
{
    Guard = std::make_unique<MessageGuard>();
    Window = std::make_unique<TestWindow>();
}

void WindowGoneTest::cleanup()
{
    Window.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

QMenu* WindowGoneTest::RecentMenu() const
{
    for (const QAction* action : Window->Find<QMenu>("menumain")->actions())
    {
        if (action->menu() != nullptr)
        {
            return action->menu();
        }
    }
    return nullptr;
}

void WindowGoneTest::PlayerClosesBeforeTheJobStops()
{
    const QTemporaryDir directory;
    Window->SetPaths(Long, directory.path());
    Window->Click("pushButtonAnalyseTrack");
    QTRY_VERIFY(Window->LastAction().startsWith(QLatin1String("Frame: ")));
    bool isClosed = false;
    bool wasJob = false;
    const Watch watch(In("scrollAreaPlay"),
                      [&](const QEvent& event)
                      {
                          if (event.type() == QEvent::Close)
                          {
                              isClosed = true;
                              wasJob = IsJob(ProgramHost.GetState());
                          }
                      });
    const LogLines lines;
    Window->End();
    QVERIFY(isClosed);
    QVERIFY(wasJob);
    QVERIFY(!IsJob(ProgramHost.GetState()));
    QVERIFY(!ProgramHost.GetThread()->isRunning());
    QCoreApplication::processEvents();
    QVERIFY(lines.Has(QStringLiteral("1 Analyse aborted!")));
}

void WindowGoneTest::PartsGoInReverseOrder()
{
    QStringList gone;
    const auto watch = [&gone](const QObject* part, const QString& name)
    { connect(part, &QObject::destroyed, [&gone, name] { gone.append(name); }); };
    watch(In("scrollAreaXAxis"), QStringLiteral("horizontal"));
    watch(In("scrollAreaYAxis"), QStringLiteral("vertical"));
    watch(In("scrollAreaAngle"), QStringLiteral("rotation"));
    watch(In("scrollAreaPlay"), QStringLiteral("player"));
    watch((*Window)->findChild<DirSettings*>(), QStringLiteral("directories"));
    for (const QWidget* dialog : DialogsOfTheWindow())
    {
        watch(dialog, ClassOf(*dialog));
    }
    watch(Window->operator->(), QStringLiteral("window"));
    Window->End();
    // A widget's children go after the word of its own end.
    const QStringList expected = {"player",     "Help",   "AboutCodecs", "AboutOpenCV",
                                  "AboutQt",    "About",  "rotation",    "vertical",
                                  "horizontal", "window", "directories"};
    QCOMPARE(gone, expected);
}

void WindowGoneTest::RecentMenuLivesOn()
{
    const QPointer<QMenu> recent = RecentMenu();
    QVERIFY(recent != nullptr && recent->parent() == nullptr);
    QCOMPARE(recent->title(), QStringLiteral("Open Recent"));
    const QPointer<DirSettings> directories = (*Window)->findChild<DirSettings*>();
    QVERIFY(directories != nullptr && directories->parent() == Window->operator->());
    Window->End();
    QVERIFY(recent != nullptr);
    QVERIFY(!recent->actions().isEmpty());
    recent->actions().constFirst()->trigger();  // nobody is left to open it
    QVERIFY(directories == nullptr);
    delete recent;
}

QTEST_MAIN(WindowGoneTest)
#include "windowgone_test.moc"
