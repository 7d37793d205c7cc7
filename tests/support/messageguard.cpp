// SPDX-License-Identifier: MIT
#include "support/messageguard.h"

#include <QMutex>
#include <QMutexLocker>
#include <QtTest>

namespace
{
/** The handler is a plain function, so what it needs lives here. */
struct Notes
{
    QMutex Mutex;
    QStringList Expected;
    QStringList Unexpected;
    QtMessageHandler Next = nullptr;  ///< Qt Test's handler
};

Notes& TheNotes()
{
    static Notes notes;
    return notes;
}
}  // namespace

MessageGuard::MessageGuard() : Former(qInstallMessageHandler(&MessageGuard::Handle))
{
    const QMutexLocker locker(&TheNotes().Mutex);
    TheNotes().Next = Former;
    TheNotes().Expected.clear();
    TheNotes().Unexpected.clear();
}

MessageGuard::~MessageGuard()
{
    qInstallMessageHandler(Former);
}

void MessageGuard::Expect(QtMsgType type, const QString& text)
{
    QTest::ignoreMessage(type, qPrintable(text));
    const QMutexLocker locker(&TheNotes().Mutex);
    TheNotes().Expected.append(text);
}

QStringList MessageGuard::TakeUnexpected()
{
    const QMutexLocker locker(&TheNotes().Mutex);
    const QStringList taken = TheNotes().Unexpected;
    TheNotes().Unexpected.clear();
    return taken;
}

void MessageGuard::Handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    QtMessageHandler next = nullptr;
    {
        const QMutexLocker locker(&TheNotes().Mutex);
        next = TheNotes().Next;
        if ((type == QtWarningMsg || type == QtCriticalMsg) && !TheNotes().Expected.removeOne(text))
        {
            TheNotes().Unexpected.append(text);
        }
    }
    if (next != nullptr)
    {
        next(type, context, text);
    }
}
