// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>
#include <QTextEdit>

#include <memory>

/** The dialogs with notes and licences. */
inline const QStringList AboutClasses = {"About", "AboutQt", "AboutOpenCV", "AboutCodecs"};

/** A new one of the class of that name. */
[[nodiscard]] std::unique_ptr<QDialog> MakeAbout(const QString& className);

/** The widget with its text. */
[[nodiscard]] inline QTextEdit* TextOf(const QDialog& dialog)
{
    return dialog.findChild<QTextEdit*>();
}
