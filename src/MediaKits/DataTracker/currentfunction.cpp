// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/currentfunction.h"

namespace {

int shownFunction = 0;

} // namespace

int currentFunction()
{
    return shownFunction;
}

void setCurrentFunction(int function)
{
    shownFunction = function;
}
