// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace Ui
{
class Help;
}

/**
 * The manual. Not modal; keeps its place and scroll position while hidden. User interface thread
 * only.
 */
class Help : public QDialog
{
    Q_OBJECT

public:
    explicit Help(QWidget* parent = nullptr);
    ~Help() override;
    Help(const Help&) = delete;
    Help& operator=(const Help&) = delete;

private:
    Ui::Help* ui;  ///< owned
};
