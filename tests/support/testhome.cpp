// SPDX-License-Identifier: MIT
#include "support/testhome.h"

#include <QFile>
#include <QtGlobal>

TestHome::TestHome() : FormerHome(qgetenv("HOME"))
{
    if (!Directory.isValid() || !qputenv("HOME", QFile::encodeName(Directory.path())))
    {
        qFatal("No home directory for the test");
    }
}

TestHome::~TestHome()
{
    qputenv("HOME", FormerHome);
}
