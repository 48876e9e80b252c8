// SPDX-License-Identifier: MIT
#include "screencap/screencap.h"

Screencap &Screencap::instance()
{
    static Screencap screencap;
    return screencap;
}

Screencap::Screencap()
{
    qRegisterMetaType<Screencap::CapStateEnum>("Screencap::CapStateEnum");
}

Screencap::~Screencap() = default;

void Screencap::setCapture(int mode, const QVariant &target)
{
    m_mode = mode;
    m_target = target;
}

void Screencap::setDefinition(int index, const QSize &size)
{
    m_definition = index;
    m_definitionSize = size;
}

uint Screencap::elapsedSeconds() const
{
    return 0;
}

bool Screencap::sourcesRegistered() const
{
    return false;
}

QString Screencap::startWarning() const
{
    return tr("录屏设备未注册");
}

void Screencap::setWarner(const std::function<void(const QString &)> &warner)
{
    m_warner = warner;
}

QList<QPair<QString, QString>> Screencap::listDirectShowDevices(int)
{
    return {};
}

QStringList Screencap::listAudioDevices(int)
{
    return {};
}

void Screencap::clearSourceConfig() {}

void Screencap::repairLeftRecordings() {}

void Screencap::start()
{
    if (m_warner)
        m_warner(startWarning());
    fail(startWarning());
}

void Screencap::pause() {}

void Screencap::resume() {}

void Screencap::stop()
{
    emit elapse(0);
}

void Screencap::setState(CapStateEnum state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged(state);
}

void Screencap::fail(const QString &reason)
{
    m_failureReason = reason;
    setState(CapFailed);
    setState(CapIdle);
}
