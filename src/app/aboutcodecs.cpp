// SPDX-License-Identifier: MIT
#include "app/aboutcodecs.h"

#include "ui_aboutcodecs.h"

AboutCodecs::AboutCodecs(QWidget* parent) : QDialog(parent), ui(new Ui::AboutCodecs)
{
    ui->setupUi(this);
}

AboutCodecs::~AboutCodecs()
{
    delete ui;
}
