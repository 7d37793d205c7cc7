// SPDX-License-Identifier: MIT
#include "support/loglines.h"

#include "app/log.h"
#include "batch/opcvthread.h"

#include <QLabel>
#include <QLatin1Char>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QWidget>

namespace
{
constexpr int PrefixWidth = 9;  // characters in front of each line of the text area

/** "Error    Out of date!" as "3 Out of date!"; other prefixes as "?". */
QString WithLevel(const QString& shown)
{
    static const QStringList Prefixes{QStringLiteral("Init     "), QStringLiteral("Run      "),
                                      QStringLiteral("Warning  "), QStringLiteral("Error    ")};
    const int level = Prefixes.indexOf(shown.left(PrefixWidth));
    const QString number = level < 0 ? QStringLiteral("?") : QString::number(level);
    return number + QLatin1Char(' ') + shown.mid(PrefixWidth);
}

/**
 * The level of the message that was added last, and a blank. Nothing that the log shows tells the
 * levels from 4 on apart, so this looks into it: the file is compiled without access control.
 */
QString LevelOfLastEntry()
{
    return QString::number(ProgramLog.Entries.constLast()->Level) + QLatin1Char(' ');
}
}  // namespace

LogLines::LogLines() : Window(std::make_unique<QWidget>())
{
    Window->setObjectName(QStringLiteral("logLinesWindow"));
    ProgramLog.Setup(Window.get());
    TextArea = Window->findChild<QPlainTextEdit*>(QStringLiteral("plainTextEdit"));
    LastAction = Window->findChild<QLabel*>(QStringLiteral("labelLog"));
    Q_ASSERT(TextArea != nullptr && LastAction != nullptr);
    connect(TextArea, &QPlainTextEdit::textChanged, this, &LogLines::SeeTextArea);
}

LogLines::~LogLines()
{
    disconnect(TextArea, nullptr, this, nullptr);
}

void LogLines::Attach(const OpCVThread* thread)
{
    // The thread's own connection was made first, so the message stands in the label by then.
    connect(thread, &OpCVThread::SignalLogEntry, this, &LogLines::SeeLabel);
}

QStringList LogLines::Take()
{
    const QStringList taken = Lines;
    Lines.clear();
    return taken;
}

QStringList LogLines::OfLevel(int level) const
{
    const QString prefix = QString::number(level) + QLatin1Char(' ');
    QStringList found;
    for (const QString& line : Lines)
    {
        if (line.startsWith(prefix))
        {
            found.append(line);
        }
    }
    return found;
}

void LogLines::SeeTextArea()
{
    if (TextArea->document()->isEmpty())
    {
        return;  // cleared
    }
    Lines.append(WithLevel(TextArea->document()->lastBlock().text()));
    TextAreaGrew = true;
}

void LogLines::SeeLabel()
{
    const bool isKnown =
        TextAreaGrew && !Lines.isEmpty() && Lines.constLast().mid(2) == LastAction->text();
    TextAreaGrew = false;
    if (!isKnown)
    {
        Lines.append(LevelOfLastEntry() + LastAction->text());
    }
}
