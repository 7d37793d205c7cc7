// SPDX-License-Identifier: MIT
#include "userhands/answermodal.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QTest>

namespace
{
constexpr int LookEvery = 20;   ///< milliseconds
constexpr int MostLooks = 500;  ///< ten seconds

/** @p top, if it is a shown widget of that kind, and shown to @p glance; else null. */
template <typename Dialog>
Dialog* Shown(QWidget* top, const AnswerModal::Glance<Dialog>& glance)
{
    auto* dialog = qobject_cast<Dialog*>(top);
    if (dialog == nullptr || !dialog->isVisible())
    {
        return nullptr;
    }
    if (glance != nullptr)
    {
        glance(*dialog);
    }
    return dialog;
}

bool PressButton(QWidget* top, QMessageBox::StandardButton button,
                 const AnswerModal::Glance<QMessageBox>& glance)
{
    const auto* box = Shown(top, glance);
    if (box == nullptr || box->button(button) == nullptr)
    {
        return false;
    }
    QTest::mouseClick(box->button(button), Qt::LeftButton);
    return true;
}

QAbstractButton* ButtonOf(const QFileDialog& dialog, QDialogButtonBox::ButtonRole role)
{
    const auto* box = dialog.findChild<QDialogButtonBox*>();
    for (QAbstractButton* button : box->buttons())
    {
        if (box->buttonRole(button) == role)
        {
            return button;
        }
    }
    return nullptr;
}

/** What the user would act on: a menu goes before the dialog under it. */
QWidget* TopWidget()
{
    QWidget* popup = QApplication::activePopupWidget();
    return popup != nullptr ? popup : QApplication::activeModalWidget();
}

void CloseOpen(QWidget* widget)
{
    if (widget != nullptr && widget->isVisible())
    {
        widget->close();
    }
}
}  // namespace

AnswerModal::AnswerModal(QMessageBox::StandardButton button, const Glance<QMessageBox>& glance)
    : AnswerModal([button, glance](QWidget* top) { return PressButton(top, button, glance); })
{}

AnswerModal::AnswerModal(std::function<bool(QWidget*)> act) : Act(std::move(act))
{
    connect(&Clock, &QTimer::timeout, this, &AnswerModal::Look);
    Clock.start(LookEvery);
}

std::function<bool(QWidget*)> AnswerModal::EnterName(const QString& name,
                                                     const Glance<QFileDialog>& glance)
{
    return [name, glance](QWidget* top)
    {
        auto* dialog = Shown(top, glance);
        if (dialog == nullptr)
        {
            return false;
        }
        if (name.isEmpty())
        {
            QTest::mouseClick(ButtonOf(*dialog, QDialogButtonBox::RejectRole), Qt::LeftButton);
            return true;
        }
        auto* edit = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        // With the focus, and in one go as from the clipboard: else the dialog would also select
        // each directory that a part of the name happens to be, and enter it instead of accepting.
        QApplication::setActiveWindow(dialog);
        edit->setFocus();
        edit->selectAll();
        edit->insert(name);
        QTest::mouseClick(ButtonOf(*dialog, QDialogButtonBox::AcceptRole), Qt::LeftButton);
        return true;
    };
}

std::function<bool(QWidget*)> AnswerModal::ChooseEntry(const QString& text,
                                                       const Glance<QMenu>& glance)
{
    return [text, glance](QWidget* top)
    {
        auto* menu = Shown(top, glance);
        if (menu == nullptr)
        {
            return false;
        }
        for (QAction* action : menu->actions())
        {
            if (!text.isEmpty() && action->text() == text)
            {
                QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier,
                                  menu->actionGeometry(action).center());
                return true;
            }
        }
        menu->close();
        return text.isEmpty();
    };
}

void AnswerModal::Look()
{
    const QPointer<QWidget> top(TopWidget());
    if (top != nullptr)
    {
        Clock.stop();  // acting runs the event loop, which must not look again meanwhile
        if (Act(top))
        {
            Answered = top == nullptr || !top->isVisible();
            CloseOpen(top);
            return;
        }
        Clock.start(LookEvery);
    }
    if (++Looks >= MostLooks)
    {
        Clock.stop();
        CloseOpen(TopWidget());
    }
}
