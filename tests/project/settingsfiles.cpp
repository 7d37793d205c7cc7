// SPDX-License-Identifier: MIT
#include "project/settingsfiles.h"

#include <QFile>
#include <QJsonDocument>

void WriteBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
    {
        qFatal("cannot write %s", qPrintable(path));
    }
}

QByteArray ReadBytes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
    {
        qFatal("cannot read %s", qPrintable(path));
    }
    return file.readAll();
}

void WriteObject(const QString& path, const QJsonObject& object)
{
    WriteBytes(path, QJsonDocument(object).toJson(QJsonDocument::Compact));
}

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
