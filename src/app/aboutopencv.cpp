// SPDX-License-Identifier: MIT
#include "app/aboutopencv.h"

#include "ui_aboutopencv.h"

AboutOpenCV::AboutOpenCV(QWidget* parent) : QDialog(parent), ui(new Ui::AboutOpenCV)
{
    ui->setupUi(this);
    setWindowTitle(tr("OpenCV License"));
}

AboutOpenCV::~AboutOpenCV()
{
    delete ui;
}
