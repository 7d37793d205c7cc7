// SPDX-License-Identifier: MIT
#include "app/aboutforms.h"

#include "app/about.h"
#include "app/aboutcodecs.h"
#include "app/aboutopencv.h"
#include "app/aboutqt.h"

std::unique_ptr<QDialog> MakeAbout(const QString& className)
{
    if (className == QLatin1String("About"))
    {
        return std::make_unique<About>();
    }
    if (className == QLatin1String("AboutQt"))
    {
        return std::make_unique<AboutQt>();
    }
    if (className == QLatin1String("AboutOpenCV"))
    {
        return std::make_unique<AboutOpenCV>();
    }
    if (className == QLatin1String("AboutCodecs"))
    {
        return std::make_unique<AboutCodecs>();
    }
    qFatal("there is no %s", qPrintable(className));
}
