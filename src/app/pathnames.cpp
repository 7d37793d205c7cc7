// SPDX-License-Identifier: MIT
#include "app/pathnames.h"

QString FileNameOf(const QString& path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

QString DirOf(const QString& path)
{
    return path.left(qMax(path.lastIndexOf(QLatin1Char('/')), 0));
}

QString RebasePath(const QString& dir, const QString& path)
{
    return QStringLiteral("%1/%2")
        .arg(dir, FileNameOf(path))
        .replace(QLatin1String("//"), QLatin1String("/"));
}
