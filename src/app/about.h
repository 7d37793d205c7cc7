// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace Ui
{
class About;
}

/**
 * Our conditions of use, with version and logo. Not modal; keeps its place and scroll position
 * while hidden. User interface thread only.
 */
class About : public QDialog
{
    Q_OBJECT

public:
    explicit About(QWidget* parent = nullptr);
    ~About() override;
    About(const About&) = delete;
    About& operator=(const About&) = delete;

private:
    Ui::About* ui;  ///< owned
};
