// SPDX-License-Identifier: MIT
#include "screencap/capturedevices.h"

#include "platform/screensource.h"

#include <QCoreApplication>

namespace {

const QString screenSource = QStringLiteral("MorvaneScreenRecorder");
const QString soundSource = QStringLiteral("MorvaneVirtualAudioCapturer");
// Categories of devices and, the first two, directions of sound.
constexpr int outputs = 2;
constexpr int pictures = 3;

bool isListed(const QString &name, int category)
{
    const auto devices = CaptureDevices::list(category);
    return std::any_of(devices.cbegin(), devices.cend(),
                       [&name](const auto &device) { return device.first == name; });
}

QString tr(const char *text)
{
    return QCoreApplication::translate("Screencap", text);
}

} // namespace

bool CaptureDevices::areSourcesRegistered()
{
    return isListed(screenSource, pictures) && isListed(soundSource, 1);
}

QList<QPair<QString, QString>> CaptureDevices::list(int category)
{
    QList<QPair<QString, QString>> devices;
    if (category == pictures) {
        if (screenAccess() == ScreenAccess::Open)
            devices += {screenSource, QString::fromLocal8Bit(qgetenv("DISPLAY"))};
        return devices;
    }
    const SoundDevices sound = soundDevices();
    for (const SoundDevice &device : category == outputs ? sound.outputs : sound.inputs)
        devices += {device.title, device.name};
    if (category != outputs && !sound.outputs.isEmpty())
        devices += {soundSource, sound.outputs.first().name};
    return devices;
}

QStringList CaptureDevices::audio(int direction)
{
    const SoundDevices sound = soundDevices();
    return names(direction == outputs ? sound.outputs : sound.inputs);
}

QStringList CaptureDevices::names(const QVector<SoundDevice> &devices)
{
    QStringList names;
    for (const SoundDevice &device : devices) {
        const bool isBroken = device.name.startsWith(QChar(QChar::ReplacementCharacter));
        if (!device.name.isEmpty() && !isBroken && !names.contains(device.name))
            names += device.name;
    }
    return names;
}

QString CaptureDevices::warning(bool isSoundMissed)
{
    switch (screenAccess()) {
    case ScreenAccess::Wayland:
        return tr(
            "当前桌面是 Wayland，无法用这种方式录制屏幕。请在登录界面选择 X11（Xorg）会话后再试");
    case ScreenAccess::None:
        return tr("录屏设备未注册");
    case ScreenAccess::Open:
        break;
    }
    if (isSoundMissed)
        return tr("没有可用的声音服务，将只录制画面");
    return {};
}
