// SPDX-License-Identifier: MIT
#pragma once

/** Test data of the form of a graph tab: one row per fact, named by the widget. */
namespace GraphFormRows
{
void AddTexts();   ///< class and text or title, in the order of the form
void AddRanges();  ///< smallest, largest and first value of the number fields
void AddTicks();   ///< check boxes and whether they are checked at first
void AddHeads();   ///< trees and the texts of their header
}  // namespace GraphFormRows
