// SPDX-License-Identifier: MIT
#pragma once

/**
 * Lets the C library keep freed memory instead of returning it to the system after each frame. The
 * library calls of one 1080p frame take and free some 80 MB; by default every frame gets these
 * pages anew, cleared, which costs as much as half of the analysis itself. The price: the process
 * keeps the memory of its largest job until it ends.
 *
 * Call it first in main, before there is a second thread. Nothing happens with another C library.
 */
void KeepFreedMemory();
