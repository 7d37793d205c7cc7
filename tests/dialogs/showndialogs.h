// SPDX-License-Identifier: MIT
#pragma once

#include "userhands/answermodal.h"

#include <QFileDialog>
#include <QList>
#include <QMessageBox>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <functional>

/** What the user sees of a question. */
struct ShownQuestion
{
    QString Title;
    QString Text;
    QMessageBox::StandardButtons Buttons;
    QMessageBox::Icon Icon = QMessageBox::NoIcon;
    bool IsCancelDefault = false;
    const QWidget* Parent = nullptr;  ///< not owned
};

/** What the user sees of a file dialog. */
struct ShownFileDialog
{
    QString Title;
    QStringList Filters;
    QFileDialog::FileMode Mode = QFileDialog::Directory;
    QFileDialog::Options Options;
    QString Directory;
    QString Name;
    QList<QUrl> Sidebar;
};

/** A glance that notes all of it. @p shown outlives the answer */
[[nodiscard]] AnswerModal::Glance<QMessageBox> Into(ShownQuestion& shown);
[[nodiscard]] AnswerModal::Glance<QFileDialog> Into(ShownFileDialog& shown);

/** The question that @p act brings up, answered with Cancel; an empty record when none came. */
[[nodiscard]] ShownQuestion CancelledQuestion(const std::function<void()>& act);

/** The file dialog that @p act brings up, cancelled; an empty record when none came. */
[[nodiscard]] ShownFileDialog CancelledFileDialog(const std::function<void()>& act);
