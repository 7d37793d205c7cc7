// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace Ui
{
class AboutOpenCV;
}

/**
 * The licence of OpenCV. Not modal; keeps its place and scroll position while hidden. User
 * interface thread only.
 */
class AboutOpenCV : public QDialog
{
    Q_OBJECT

public:
    explicit AboutOpenCV(QWidget* parent = nullptr);
    ~AboutOpenCV() override;
    AboutOpenCV(const AboutOpenCV&) = delete;
    AboutOpenCV& operator=(const AboutOpenCV&) = delete;

private:
    Ui::AboutOpenCV* ui;  ///< owned
};
