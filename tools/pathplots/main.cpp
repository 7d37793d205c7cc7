// SPDX-License-Identifier: MIT
#include "pictures.h"
#include "plotpage.h"

#include <QApplication>
#include <QDir>
#include <QFontDatabase>
#include <QLocale>
#include <QPalette>
#include <QStyleFactory>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc != 2)
    {
        std::fputs("Usage: pathplots DIR\nDraws the pictures of docs/camera-path.md into DIR.\n",
                   stderr);
        return 2;
    }
    // Nothing of the machine's own look: the same calculation is to give the same bytes.
    QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/OpenSans-Regular.ttf"));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(QPalette(Qt::black, Qt::white, Qt::white, Qt::black, Qt::gray,
                                      Qt::black, Qt::white, Qt::white, Qt::white));
    QLocale::setDefault(QLocale::c());
    const QDir pictures(QString::fromLocal8Bit(argv[1]));
    for (const Picture& picture : AllPictures())
    {
        PlotPage page;
        picture.Draw(page);
        const QString file = pictures.filePath(QStringLiteral("%1.png").arg(picture.Name));
        if (!page.Save(file))
        {
            std::fprintf(stderr, "pathplots: \"%s\" cannot be written.\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
