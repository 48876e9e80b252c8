// SPDX-License-Identifier: MIT
#include "platform/terminal.h"

#include <unistd.h>

bool isTerminal(FILE *stream)
{
    return isatty(fileno(stream)) == 1;
}
