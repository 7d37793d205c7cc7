// SPDX-License-Identifier: MIT
#include "app/help.h"

#include "ui_help.h"

Help::Help(QWidget* parent) : QDialog(parent), ui(new Ui::Help)
{
    ui->setupUi(this);
    setWindowTitle(tr("Help Quick Start Guide"));
}

Help::~Help()
{
    delete ui;
}
