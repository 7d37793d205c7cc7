// SPDX-License-Identifier: MIT
#include <QAbstractButton>
#include <QApplication>
#include <QGenericPlugin>
#include <QMainWindow>
#include <QMessageBox>
#include <QTimer>

#include <cstdio>

/**
 * A plug-in for the program itself, which loads it at its start when told by the environment, and
 * which stands in for the user: tells the title of the window that comes up, closes it, and says No
 * to the question about the project. Told a number, it ends the event loop with that instead.
 */
class CloseWindow : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "closewindow.json")

public:
    QObject* create(const QString& name, const QString& options) override
    {
        Q_UNUSED(name)
        auto* clock = new QTimer;  // the application deletes what a plug-in gives it
        connect(clock, &QTimer::timeout, clock,
                [clock, options] { EndWhenShown(*clock, options); });
        clock->start(First);
        return clock;
    }

private:
    static void EndWhenShown(QTimer& clock, const QString& exitCode)
    {
        if (auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
        {
            clock.stop();
            question->button(QMessageBox::No)->click();
            return;
        }
        for (QWidget* window : QApplication::topLevelWidgets())
        {
            if (qobject_cast<QMainWindow*>(window) != nullptr && window->isVisible() &&
                clock.interval() == First)
            {
                clock.setInterval(First + 1);  // once is enough; from here on wait for the question
                std::printf("%s\n", qPrintable(window->windowTitle()));
                End(*window, exitCode);
                return;
            }
        }
    }

    static void End(QWidget& window, const QString& exitCode)
    {
        if (exitCode.isEmpty())
        {
            window.close();
        }
        else
        {
            QCoreApplication::exit(exitCode.toInt());
        }
    }

    static constexpr int First = 10;  // milliseconds
};

#include "closewindow.moc"
