// SPDX-License-Identifier: MIT
#include "app/pathnames.h"

#include <QTest>

class PathNamesTest : public QObject
{
    Q_OBJECT

private slots:
    void FileName_data();
    void FileName();
    void Dir_data();
    void Dir();
    void Rebase_data();
    void Rebase();
};

void PathNamesTest::FileName_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the part behind the last slash") << "/home/a/clip.mov"
                                                    << "clip.mov";
    QTest::newRow("the whole string without a slash") << "clip.mov"
                                                      << "clip.mov";
    QTest::newRow("nothing behind a closing slash") << "/home/a/"
                                                    << "";
    QTest::newRow("only the last of two slashes counts") << "a//b"
                                                         << "b";
    QTest::newRow("empty stays empty") << ""
                                       << "";
    QTest::newRow("the root has no name") << "/"
                                          << "";
    QTest::newRow("a relative path") << "../videos/clip"
                                     << "clip";
    QTest::newRow("a backslash is part of the name") << "a\\b.mp4"
                                                     << "a\\b.mp4";
    QTest::newRow("blanks and dots are part of the name") << "/x/a b.c.mov "
                                                          << "a b.c.mov ";
}

void PathNamesTest::FileName()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(FileNameOf(path), expected);
}

void PathNamesTest::Dir_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the part in front of the last slash") << "/home/a/clip.mov"
                                                         << "/home/a";
    QTest::newRow("empty without a slash") << "clip.mov"
                                           << "";
    QTest::newRow("a closing slash goes") << "/home/a/"
                                          << "/home/a";
    QTest::newRow("a file in the root has the empty directory") << "/clip.mov"
                                                                << "";
    QTest::newRow("of two slashes the first stays") << "a//b"
                                                    << "a/";
    QTest::newRow("empty stays empty") << ""
                                       << "";
    QTest::newRow("the root is empty") << "/"
                                       << "";
    QTest::newRow("a relative path") << "../videos/clip"
                                     << "../videos";
}

void PathNamesTest::Dir()
{
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(DirOf(path), expected);
}

void PathNamesTest::Rebase_data()
{
    QTest::addColumn<QString>("dir");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");
    QTest::newRow("the name moves into the directory") << "/p"
                                                       << "/old/Tracking.dat"
                                                       << "/p/Tracking.dat";
    QTest::newRow("a bare name moves too") << "/p"
                                           << "Tracking.dat"
                                           << "/p/Tracking.dat";
    QTest::newRow("a closing slash of the directory is not doubled") << "/p/"
                                                                     << "/old/Tracking.dat"
                                                                     << "/p/Tracking.dat";
    QTest::newRow("the root as directory") << "/"
                                           << "x.dat"
                                           << "/x.dat";
    QTest::newRow("an empty directory leaves the slash") << ""
                                                         << "/old/x.dat"
                                                         << "/x.dat";
    QTest::newRow("double slashes of the directory go") << "//server//p"
                                                        << "x.dat"
                                                        << "/server/p/x.dat";
    QTest::newRow("one pass: three slashes leave two") << "/p//"
                                                       << "x.dat"
                                                       << "/p//x.dat";
    QTest::newRow("a path without a name gives the directory") << "/p"
                                                               << "/old/"
                                                               << "/p/";
    QTest::newRow("an empty path gives the directory") << "/p"
                                                       << ""
                                                       << "/p/";
    QTest::newRow("both empty") << ""
                                << ""
                                << "/";
    QTest::newRow("a relative directory stays relative") << "p/q"
                                                         << "../x.dat"
                                                         << "p/q/x.dat";
    QTest::newRow("percent signs are text") << "/p%2"
                                            << "/old/a%1.dat"
                                            << "/p%2/a%1.dat";
}

void PathNamesTest::Rebase()
{
    QFETCH(QString, dir);
    QFETCH(QString, path);
    QFETCH(QString, expected);
    QCOMPARE(RebasePath(dir, path), expected);
}

QTEST_APPLESS_MAIN(PathNamesTest)
#include "pathnames_test.moc"
