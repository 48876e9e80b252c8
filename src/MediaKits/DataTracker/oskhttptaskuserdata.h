// SPDX-License-Identifier: MIT
#pragma once

#include "http/httptask.h"

/// What one post to the collector carries along.
class OskHttpTaskUserData : public HttpTaskUserData
{
public:
    int attemptsLeft = 2;
};
