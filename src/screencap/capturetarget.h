// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QVariant>

/// What a recording shows, as it is on the screen at present.
class CaptureTarget
{
public:
    /// @param mode of `Screencap::CaptureMode`
    /// @param target as Screencap::setCapture() has it
    CaptureTarget(int mode, const QVariant &target) : m_mode(mode), m_target(target) {}

    bool isWindow() const;
    quint32 window() const { return m_target.toUInt(); }

    /// In pixels, even numbers; empty when there is nothing of it any more: a window that was
    /// closed, an area beside the screen.
    QSize presentSize() const;
    /// Whether there is something to see of it.
    bool isVisible() const;
    /// Why there is nothing of it, for the user.
    QString lossReason() const;
    /// Size of the picture that a film of the target as it is now has; even numbers.
    /// @param definition of `Screencap::Definition`
    QSize canvas(int definition) const;
    /// Tells it to the screen source.
    /// @return false when that couldn't be written: a recording would show something else
    bool tellSource() const;

private:
    QRect visibleArea() const;

    int m_mode;
    QVariant m_target;
};
