// SPDX-License-Identifier: MIT
#include "app/about.h"

#include "ui_about.h"

About::About(QWidget* parent) : QDialog(parent), ui(new Ui::About)
{
    ui->setupUi(this);
    setWindowTitle(tr("Molvane License"));
}

About::~About()
{
    delete ui;
}
