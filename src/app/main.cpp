// SPDX-License-Identifier: MIT
#include "app/allocator.h"
#include "app/mainwindow.h"
#include "app/programapplication.h"

#include <QApplication>

int main(int argc, char** argv)
{
    KeepFreedMemory();
    QApplication application(argc, argv);
    ProgramApplication = &application;
    QString projectFile;
    if (argc > 1)
    {
        projectFile.append(QString::fromUtf8(argv[1]));
    }
    MainWindow window(nullptr, projectFile);
    window.show();
    return QApplication::exec();
}
