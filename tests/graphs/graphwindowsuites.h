// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <memory>

// The test classes that run beside GraphWindowTest, in one program.

[[nodiscard]] std::unique_ptr<QObject> NewGraphFormTest();     ///< what the form says
[[nodiscard]] std::unique_ptr<QObject> NewGraphDisplayTest();  ///< check boxes and plot
