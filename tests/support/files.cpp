// SPDX-License-Identifier: MIT
#include "support/files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

void WriteBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size())
    {
        qFatal("Cannot write %s", qPrintable(path));
    }
}

void WriteObject(const QString& path, const QJsonObject& object)
{
    WriteBytes(path, QJsonDocument(object).toJson());
}

QByteArray ReadBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("no file");
}
