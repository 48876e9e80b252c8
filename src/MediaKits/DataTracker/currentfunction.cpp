// SPDX-License-Identifier: MIT
#include "MediaKits/DataTracker/currentfunction.h"

namespace {

MediaFunction shownFunction = MediaFunction::Home;

} // namespace

MediaFunction currentFunction()
{
    return shownFunction;
}

void setCurrentFunction(MediaFunction function)
{
    shownFunction = function;
}
