// SPDX-License-Identifier: MIT
#include "dialogs/starttrace.h"

#include "batch/stabilizerhost.h"
#include "dialogs/homefiles.h"
#include "project/filedialogs.h"
#include "support/files.h"

#include <QActionEvent>
#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSpinBox>

namespace
{
bool IsA(const QObject& object, const char* className)
{
    return qstrcmp(object.metaObject()->className(), className) == 0;
}

/** For the window's own widgets of unique names; null while there are none. */
template <typename Widget>
const Widget* Look(const QWidget* window, const char* name)
{
    return window != nullptr ? window->findChild<Widget*>(QString::fromLatin1(name)) : nullptr;
}
}  // namespace

StartTrace::StartTrace() : Configuration(ReadBytes(ConfigurationPath())), Sidebar(SidebarUrls)
{
    qApp->installEventFilter(this);
}

StartTrace::~StartTrace()
{
    qApp->removeEventFilter(this);
}

QStringList StartTrace::Story()
{
    Notice();
    return Lines;
}

bool StartTrace::eventFilter(QObject* watched, QEvent* event)
{
    if (IsNoticing)
    {
        return false;
    }
    if (IsA(*watched, "MainWindow"))
    {
        Window = qobject_cast<QWidget*>(watched);
    }
    Notice();
    switch (event->type())
    {
        case QEvent::WindowTitleChange:
            SeeTitle(*watched);
            break;
        case QEvent::ParentChange:
            if (IsA(*watched, "GraphWindow") || IsA(*watched, "PreviewPlayer"))
            {
                Lines.append(QStringLiteral("%1 in %2")
                                 .arg(QString::fromLatin1(watched->metaObject()->className()),
                                      watched->parent()->parent()->objectName()));
            }
            break;
        case QEvent::ActionAdded:
            SeeMenu(*watched, *event);
            break;
        case QEvent::HideToParent:
            if (watched->objectName() == QLatin1String("statusbar") ||
                watched->objectName() == QLatin1String("pushButtonTest"))
            {
                TellOnce(QStringLiteral("hidden ") + watched->objectName());
            }
            break;
        case QEvent::LanguageChange:
            Lines.append(QStringLiteral("another language"));
            break;
        default:
            break;
    }
    return false;
}

void StartTrace::Notice()
{
    IsNoticing = true;
    NoticeLog();
    NoticeFiles();
    if (!qApp->styleSheet().isEmpty())
    {
        TellOnce(QStringLiteral("style sheet"));
    }
    if (ProgramHost.GetThread() != nullptr)
    {
        TellOnce(QStringLiteral("worker"));
    }
    NoticeForm();
    IsNoticing = false;
}

void StartTrace::NoticeLog()
{
    if (const auto* text = Look<QPlainTextEdit>(Window, "plainTextEdit"))
    {
        TellOnce(QStringLiteral("log"));
        const QString content = text->toPlainText();
        const QStringList lines =
            content.isEmpty() ? QStringList() : content.split(QLatin1Char('\n'));
        for (const QString& line : lines.mid(LogLines))
        {
            Lines.append(QStringLiteral("log: ") + line);
        }
        LogLines = lines.size();
    }
}

void StartTrace::NoticeForm()
{
    for (const char* name : {"spinBoxRescaleXAxis", "spinBoxRescaleYAxis"})
    {
        const auto* field = Look<QSpinBox>(Window, name);
        if (field != nullptr && field->minimum() == 50 && field->maximum() == 20000)
        {
            TellOnce(QStringLiteral("range of ") + QString::fromLatin1(name));
        }
    }
    const auto* warp = Look<QComboBox>(Window, "comboBoxWarpType");
    if (warp != nullptr && warp->count() == 4 && !warp->isEnabled() && warp->currentIndex() == 1)
    {
        TellOnce(QStringLiteral("settings form filled"));
    }
}

/** The sidebar first: accepting the directories makes it before it writes the configuration. */
void StartTrace::NoticeFiles()
{
    if (Sidebar != SidebarUrls)
    {
        Sidebar = SidebarUrls;
        QStringList places;
        for (const QUrl& url : qAsConst(Sidebar))
        {
            places.append(url.toLocalFile());
        }
        Lines.append(QStringLiteral("sidebar: ") + places.join(QLatin1Char(',')));
    }
    const QByteArray bytes = ReadBytes(ConfigurationPath());
    if (Configuration != bytes)
    {
        Configuration = bytes;
        Lines.append(QStringLiteral("configuration: %1; %2; %3")
                         .arg(ReadObject(ConfigurationPath()).value("ProjectFile").toString(),
                              RecentProjects().join(QLatin1Char(',')),
                              QuickDirectories().join(QLatin1Char(','))));
    }
}

void StartTrace::SeeTitle(const QObject& watched)
{
    if (IsA(watched, "MainWindow"))
    {
        Lines.append(QStringLiteral("title: ") + Window->windowTitle());
    }
    for (const char* name :
         {"About", "AboutQt", "AboutOpenCV", "AboutCodecs", "Help", "DirSettings"})
    {
        if (IsA(watched, name))
        {
            TellOnce(QStringLiteral("dialog ") + QString::fromLatin1(name));
        }
    }
}

/** What is put between the entries that the form made. */
void StartTrace::SeeMenu(const QObject& watched, const QEvent& event)
{
    const auto& added = static_cast<const QActionEvent&>(event);
    if (watched.objectName() == QLatin1String("menumain") && added.before() != nullptr)
    {
        const QString entry =
            added.action()->isSeparator() ? QStringLiteral("separator") : added.action()->text();
        Lines.append(QStringLiteral("%1 before %2").arg(entry, added.before()->objectName()));
    }
}

void StartTrace::TellOnce(const QString& line)
{
    if (!Told.contains(line))
    {
        Told.insert(line);
        Lines.append(line);
    }
}
