// SPDX-License-Identifier: MIT
#include "report.h"

#include <QTextStream>

Report::Report(const QString& file) : File(file)
{
    File.open(QIODevice::Append | QIODevice::Text);
}

void Report::Fact(const QString& text)
{
    Write(QStringLiteral("        ") + text);
}

bool Report::Step(bool worked, const QString& text)
{
    Failures += worked ? 0 : 1;
    Write((worked ? QStringLiteral("ok      ") : QStringLiteral("FAILED  ")) + text);
    return worked;
}

void Report::Write(const QString& line)
{
    QTextStream(stdout) << line << Qt::endl;
    File.write(line.toUtf8() + '\n');
    File.flush();
}
