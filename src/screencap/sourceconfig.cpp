// SPDX-License-Identifier: MIT
#include "screencap/sourceconfig.h"

#include "platform/screensource.h"

#include <QSettings>

namespace {

const QString captureHeight = QStringLiteral("capture_height");
const QString captureWidth = QStringLiteral("capture_width");
const QString startX = QStringLiteral("start_x");
const QString startY = QStringLiteral("start_y");
const QString trackedWindow = QStringLiteral("hwnd_to_track");

// All that the source knows; the program writes the ones named above only.
const QString valueNames[] = {
    captureHeight,
    captureWidth,
    startX,
    startY,
    QStringLiteral("default_max_fps"),
    QStringLiteral("stretch_to_width"),
    QStringLiteral("stretch_to_height"),
    QStringLiteral("stretch_mode_high_quality_if_1"),
    trackedWindow,
    QStringLiteral("disable_aero_for_vista_plus_if_1"),
    QStringLiteral("track_new_x_y_coords_each_frame_if_1"),
    QStringLiteral("capture_mouse_default_1"),
    QStringLiteral("capture_foreground_window_if_1"),
    QStringLiteral("dedup_if_1"),
    QStringLiteral("millis_to_sleep_between_poll_for_dedupe_changes"),
    QStringLiteral("capture_transparent_windows_including_mouse_in_non_aero_if_1_causes_annoying_"
                   "mouse_flicker"),
    QStringLiteral("hwnd_to_track_with_window_decoration"),
    QStringLiteral("last_init_config_was"),
};

bool isWritten(QSettings *settings)
{
    settings->sync();
    return settings->status() == QSettings::NoError;
}

} // namespace

QSize SourceConfig::evenSize(const QSize &size)
{
    constexpr int evenMask = ~1;
    return {size.width() & evenMask, size.height() & evenMask};
}

bool SourceConfig::clear()
{
    QSettings settings(captureSettingsPath(), QSettings::IniFormat);
    for (const QString &name : valueNames)
        settings.remove(name);
    return isWritten(&settings);
}

bool SourceConfig::writeArea(const QRect &area)
{
    QSettings settings(captureSettingsPath(), QSettings::IniFormat);
    settings.setValue(startX, area.left());
    settings.setValue(startY, area.top());
    const QSize size = evenSize(area.size());
    settings.setValue(captureWidth, size.width());
    settings.setValue(captureHeight, size.height());
    return isWritten(&settings);
}

bool SourceConfig::writeWindow(quint32 window, const QSize &size)
{
    QSettings settings(captureSettingsPath(), QSettings::IniFormat);
    if (!size.isEmpty()) {
        settings.setValue(captureWidth, uint(evenSize(size).width()));
        settings.setValue(captureHeight, uint(evenSize(size).height()));
    }
    settings.setValue(trackedWindow, window);
    return isWritten(&settings);
}
