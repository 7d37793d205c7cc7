// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

namespace Ui
{
class AboutCodecs;
}

/**
 * The codec libraries behind reading and writing video, with options and licences. Its action is
 * hidden. Not modal; keeps its place and scroll position while hidden. User interface thread only.
 */
class AboutCodecs : public QDialog
{
    Q_OBJECT

public:
    explicit AboutCodecs(QWidget* parent = nullptr);
    ~AboutCodecs() override;
    AboutCodecs(const AboutCodecs&) = delete;
    AboutCodecs& operator=(const AboutCodecs&) = delete;

private:
    Ui::AboutCodecs* ui;  ///< owned
};
