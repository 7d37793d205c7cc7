// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

class QFileDialog;
class QMenu;
class QWidget;

/**
 * Answers the next message box, file dialog or context menu as a user would, while the call that
 * opens it blocks. Make one before the call, ask WasAnswered after it. What it waits for must come
 * within ten seconds; another dialog that comes instead is closed, and so is one that stays open
 * after its answer, so that nothing hangs. Of several, each waits for its own kind.
 */
class AnswerModal : public QObject
{
    Q_OBJECT

public:
    /** Sees the dialog as the user does before the answer. */
    template <typename Dialog>
    using Glance = std::function<void(const Dialog&)>;

    /** Presses a button of the next message box. */
    explicit AnswerModal(QMessageBox::StandardButton button,
                         const Glance<QMessageBox>& glance = nullptr);

    /** Puts @p name into the next file dialog and accepts it; an empty name cancels. */
    static AnswerModal FileDialog(const QString& name, const Glance<QFileDialog>& glance = nullptr)
    {
        return AnswerModal(EnterName(name, glance));
    }

    /** Chooses the entry of the next menu with that text; an empty text closes the menu. */
    static AnswerModal Menu(const QString& text, const Glance<QMenu>& glance = nullptr)
    {
        return AnswerModal(ChooseEntry(text, glance));
    }

    /**
     * Answers by @p act, which looks at the widget on top and returns false while it is not the
     * right one.
     */
    explicit AnswerModal(std::function<bool(QWidget*)> act);

    /** True when the answer was given and has closed what it answered. */
    [[nodiscard]] bool WasAnswered() const { return Answered; }

private:
    static std::function<bool(QWidget*)> EnterName(const QString& name,
                                                   const Glance<QFileDialog>& glance);
    static std::function<bool(QWidget*)> ChooseEntry(const QString& text,
                                                     const Glance<QMenu>& glance);
    void Look();

    std::function<bool(QWidget*)> Act;
    QTimer Clock;
    int Looks = 0;
    bool Answered = false;
};
