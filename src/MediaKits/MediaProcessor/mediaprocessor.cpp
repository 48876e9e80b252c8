// SPDX-License-Identifier: MIT
#include "MediaKits/MediaProcessor/mediaprocessor.h"

MediaProcessor::MediaProcessor(QObject *parent) : QObject(parent)
{
    qRegisterMetaType<MediaProcessor::State>("MediaProcessor::State");
}

void MediaProcessor::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged(state);
}
