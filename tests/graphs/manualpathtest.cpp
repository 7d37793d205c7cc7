// SPDX-License-Identifier: MIT
#include "graphs/manualpathtest.h"

#include "dialogs/dialogguard.h"

#include <QTest>

void ManualPathTest::StartWindow()
{
    Guard = std::make_unique<MessageGuard>();
    Manual = std::make_unique<ManualPathWindow>(Frames);
}

void ManualPathTest::cleanup()
{
    Manual.reset();
    QCOMPARE(EndDialogGuard(Guard).join(QLatin1Char('\n')), QString());
}

const QStringList TwoSectionsTest::TwoSectionsRows = {
    "[10:20]|Section", ">    10|     1", ">    20|     2", "[60:60]|Section", ">    60|     3"};

std::vector<ManualPathSection> TwoSectionsTest::TwoSections()
{
    return {{{{10, 1.0}, {20, 2.0}}}, {{{60, 3.0}}}};
}

void TwoSectionsTest::init()
{
    StartWindow();
    Manual->Load(TwoSections());
    QCOMPARE(Manual->Rows(), TwoSectionsRows);
}

QTreeWidgetItem* TwoSectionsTest::Target(const QString& name) const
{
    return name == QLatin1String("section") ? Manual->Item(0)
           : name == QLatin1String("point") ? Manual->Item(0, 1)
                                            : nullptr;
}

QStringList TwoSectionsTest::Without(QStringList rows, int place, int count)
{
    while (count-- > 0)
    {
        rows.removeAt(place);
    }
    return rows;
}
