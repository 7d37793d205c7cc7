// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace Ui
{
class AboutQt;
}

/**
 * The licences of Qt and Qwt; tells the version of Qt that the program runs with. Not modal; keeps
 * its place and scroll position while hidden. User interface thread only.
 */
class AboutQt : public QDialog
{
    Q_OBJECT

public:
    explicit AboutQt(QWidget* parent = nullptr);
    ~AboutQt() override;
    AboutQt(const AboutQt&) = delete;
    AboutQt& operator=(const AboutQt&) = delete;

private:
    Ui::AboutQt* ui;  ///< owned
};
