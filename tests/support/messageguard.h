// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

/**
 * Notes every warning and critical message of Qt that the test did not announce, from any thread.
 *
 * Make it in init(): by then Qt Test's own handler is installed, and all messages go on to that
 * one. In cleanup() compare TakeUnexpected() with an empty list. One object at a time.
 */
class MessageGuard
{
public:
    MessageGuard();
    ~MessageGuard();
    MessageGuard(const MessageGuard&) = delete;
    MessageGuard& operator=(const MessageGuard&) = delete;

    /**
     * Announces one message. Takes the place of QTest::ignoreMessage, whose list nobody else can
     * ask, and calls it: the test fails too when the message does not come.
     */
    void Expect(QtMsgType type, const QString& text);

    /** The messages that nobody announced, oldest first; forgets them. */
    [[nodiscard]] QStringList TakeUnexpected();

private:
    static void Handle(QtMsgType type, const QMessageLogContext& context, const QString& text);

    QtMessageHandler Former;
};
