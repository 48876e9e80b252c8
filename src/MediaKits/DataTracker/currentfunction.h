// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppInstance/LocalStore/mediafunction.h"

/// The function that the user sees. One value for the whole process; main thread only.
MediaFunction currentFunction();
void setCurrentFunction(MediaFunction function);
