// SPDX-License-Identifier: MIT
#pragma once

class QApplication;

/** The application object, on the stack of main; null until main has made it. Not owned. */
extern QApplication* ProgramApplication;
