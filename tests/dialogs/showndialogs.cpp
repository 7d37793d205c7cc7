// SPDX-License-Identifier: MIT
#include "dialogs/showndialogs.h"

#include <QLineEdit>
#include <QPushButton>

AnswerModal::Glance<QMessageBox> Into(ShownQuestion& shown)
{
    return [&shown](const QMessageBox& box)
    {
        shown.Title = box.windowTitle();
        shown.Text = box.text();
        shown.Buttons = box.standardButtons();
        shown.Icon = box.icon();
        shown.IsCancelDefault = box.defaultButton() != nullptr &&
                                box.defaultButton() == box.button(QMessageBox::Cancel);
        shown.Parent = box.parentWidget();
    };
}

AnswerModal::Glance<QFileDialog> Into(ShownFileDialog& shown)
{
    return [&shown](const QFileDialog& dialog)
    {
        shown.Title = dialog.windowTitle();
        shown.Filters = dialog.nameFilters();
        shown.Mode = dialog.fileMode();
        shown.Options = dialog.options();
        shown.Directory = dialog.directory().absolutePath();
        shown.Name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text();
        shown.Sidebar = dialog.sidebarUrls();
    };
}

ShownQuestion CancelledQuestion(const std::function<void()>& act)
{
    ShownQuestion shown;
    const AnswerModal question(QMessageBox::Cancel, Into(shown));
    act();
    return question.WasAnswered() ? shown : ShownQuestion();
}

ShownFileDialog CancelledFileDialog(const std::function<void()>& act)
{
    ShownFileDialog shown;
    const auto dialog = AnswerModal::FileDialog(QString(), Into(shown));
    act();
    return dialog.WasAnswered() ? shown : ShownFileDialog();
}
