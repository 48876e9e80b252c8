// SPDX-License-Identifier: MIT
#include "platform/computerinfo.h"

#include "platform/deviceid.h"
#include "platform/screensize.h"
#include "platform/systemversion.h"

#include <system_error>
#include <thread>

namespace Win32Env {

namespace {

QString computeDeviceId()
{
    QString id;
    const auto read = [&id]() { id = readDeviceId(DeviceIdSources::ofSystem()); };
    try {
        std::thread(read).join();
    } catch (const std::system_error &) {
        // No thread can be had; the id is read all the same.
        read();
    }
    return id;
}

} // namespace

QString ComputerInfo::getDeviceID()
{
    static const QString id = computeDeviceId();
    return id;
}

QString ComputerInfo::systemVersion()
{
    static const QString version = readSystemVersion();
    return version;
}

int ComputerInfo::screenWidth()
{
    return screenSizeInPixels().width();
}

int ComputerInfo::screenHeight()
{
    return screenSizeInPixels().height();
}

} // namespace Win32Env
