// SPDX-License-Identifier: MIT
#pragma once

#include "app/mainwindow.h"

#include <memory>

/**
 * The program's window, made by the first benchmark that needs one. There is one, as in the
 * program: stabilizer and worker belong to the process and keep to its project. main ends it.
 */
extern std::unique_ptr<MainWindow> BenchmarkedWindow;
