// SPDX-License-Identifier: MIT
#include "screencap/capturetarget.h"

#include "platform/screensize.h"
#include "platform/screensource.h"
#include "screencap/capturecommand.h"
#include "screencap/screencap.h"
#include "screencap/sourceconfig.h"

#include <QCoreApplication>

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("Screencap", text);
}

} // namespace

bool CaptureTarget::isWindow() const
{
    return m_mode == Screencap::WindowMode;
}

// An area that begins or ends beside the screen by a rounded pixel can't be read at all.
QRect CaptureTarget::visibleArea() const
{
    return m_target.toRect() & QRect(QPoint(0, 0), screenSizeInPixels());
}

QSize CaptureTarget::presentSize() const
{
    if (isWindow())
        return SourceConfig::evenSize(windowSize(window()).value_or(QSize()));
    return SourceConfig::evenSize(m_mode == Screencap::AreaMode ? visibleArea().size()
                                                                : screenSizeInPixels());
}

bool CaptureTarget::isVisible() const
{
    return !isWindow() || isWindowViewable(window());
}

QString CaptureTarget::lossReason() const
{
    if (isWindow())
        return tr("录制的窗口已关闭，录制已结束");
    if (m_mode == Screencap::AreaMode)
        return tr("录制的区域不在屏幕上，录制已结束");
    return tr("录屏设备未注册");
}

QSize CaptureTarget::canvas(int definition) const
{
    const QSize box = CaptureCommand::boxOf(definition);
    if (m_mode != Screencap::FullMode || box.isEmpty())
        return presentSize();
    return SourceConfig::evenSize(presentSize().scaled(box, Qt::KeepAspectRatio));
}

bool CaptureTarget::tellSource() const
{
    if (!SourceConfig::clear())
        return false;
    if (m_mode == Screencap::AreaMode)
        return SourceConfig::writeArea(visibleArea());
    return !isWindow() || SourceConfig::writeWindow(window(), presentSize());
}
