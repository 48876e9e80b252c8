// SPDX-License-Identifier: MIT
#pragma once

/// The function that the user sees, 0 for the home page and 1 to 11 for the function pages in
/// their order. One value for the whole process; main thread only.
int currentFunction();
void setCurrentFunction(int function);
