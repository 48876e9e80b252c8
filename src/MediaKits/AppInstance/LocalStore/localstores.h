// SPDX-License-Identifier: MIT
#pragma once

// The stores together, with which a program begins and ends.

/// Reads all files anew: another instance of the program may have written them meanwhile.
void reloadStores();

/// Writes what has changed.
void saveStores();
