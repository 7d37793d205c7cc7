// SPDX-License-Identifier: MIT
#include "project/settingsfiles.h"
#include "support/files.h"

#include <QJsonDocument>

QJsonObject ReadObject(const QString& path)
{
    const QJsonDocument document = QJsonDocument::fromJson(ReadBytes(path));
    if (!document.isObject())
    {
        qFatal("no object in %s", qPrintable(path));
    }
    return document.object();
}

QStringList Numbers(int first, int last)
{
    QStringList names;
    for (int i = first; i <= last; ++i)
    {
        names += QString::number(i);
    }
    return names;
}

QJsonArray Entries(const QString& key, const QStringList& texts)
{
    QJsonArray array;
    for (const QString& text : texts)
    {
        array.append(QJsonObject{{key, text}});
    }
    return array;
}
