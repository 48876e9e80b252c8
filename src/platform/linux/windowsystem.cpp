// SPDX-License-Identifier: MIT
#include "platform/windowsystem.h"

#include <QByteArray>

static void setUnlessGiven(const char *variable, const char *value)
{
    if (qEnvironmentVariableIsEmpty(variable))
        qputenv(variable, value);
}

void chooseWindowSystem()
{
    setUnlessGiven("QT_QPA_PLATFORM", "xcb");
    setUnlessGiven("QT_XCB_GL_INTEGRATION", "none");
}
