// SPDX-License-Identifier: MIT
#include <QGenericPlugin>
#include <QGuiApplication>
#include <QTimer>
#include <QWindow>

#include <cstdio>

/**
 * A plug-in for the program itself, which loads it at its start when told by the environment, and
 * which stands in for the user: tells the title of the window that comes up, and closes it.
 */
class CloseWindow : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "closewindow.json")

public:
    QObject* create(const QString& name, const QString& specification) override
    {
        Q_UNUSED(name)
        Q_UNUSED(specification)
        auto* clock = new QTimer;  // the application deletes what a plug-in gives it
        connect(clock, &QTimer::timeout, clock, [clock] { CloseWhenShown(*clock); });
        clock->start(10);
        return clock;
    }

private:
    static void CloseWhenShown(QTimer& clock)
    {
        for (QWindow* window : QGuiApplication::topLevelWindows())
        {
            if (window->isExposed())
            {
                clock.stop();
                std::printf("%s\n", qPrintable(window->title()));
                window->close();
                return;
            }
        }
    }
};

#include "closewindow.moc"
