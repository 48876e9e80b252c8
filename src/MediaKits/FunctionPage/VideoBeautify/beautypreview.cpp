// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoBeautify/beautypreview.h"

#include "MediaKits/Player/csvideoplayer.h"

#include <QStringList>

#include <cmath>
#include <utility>

namespace {

constexpr int leastPauseMs = 60;
// Below this a shift of brightness or colour is none.
constexpr float leastShift = 0.00001F;

QString number(float value)
{
    return QString::number(double(value), 'g', 6);
}

bool isSeen(float shift)
{
    return std::abs(shift) > leastShift;
}

QStringList toneFilter(const VideoBeautyParam &look)
{
    if (qFuzzyCompare(look.contrast, 1.0F) && qFuzzyCompare(look.saturation, 1.0F) &&
        !isSeen(look.brightness))
        return {};
    return {QStringLiteral("eq=contrast=%1:brightness=%2:saturation=%3")
                .arg(number(look.contrast), number(look.brightness), number(look.saturation))};
}

QStringList balanceFilter(const VideoBeautyParam &look)
{
    QStringList parts;
    if (isSeen(look.red))
        parts += QStringLiteral("rh=%1:rm=%1:rs=%1").arg(number(look.red));
    if (isSeen(look.green))
        parts += QStringLiteral("gh=%1:gm=%1:gs=%1").arg(number(look.green));
    if (isSeen(look.blue))
        parts += QStringLiteral("bh=%1:bm=%1:bs=%1").arg(number(look.blue));
    return parts.isEmpty()
               ? parts
               : QStringList(QLatin1String("colorbalance=") + parts.join(QLatin1Char(':')));
}

} // namespace

BeautyPreview::BeautyPreview(CSVideoPlayer *player, QObject *parent)
    : QObject(parent), m_player(player)
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(leastPauseMs);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isPending)
            send();
    });
    // What was set before the player ran comes into force as soon as it does.
    connect(player, &CSVideoPlayer::started, this,
            [this] { QTimer::singleShot(0, this, &BeautyPreview::onStarted); });
}

void BeautyPreview::show(const VideoBeautyParam &look)
{
    m_look = look;
    request();
}

void BeautyPreview::setPlain(bool plain)
{
    m_isPlain = plain;
    request();
}

void BeautyPreview::onStarted()
{
    m_speed = 1.0F;
    m_volume = 1.0F;
    request();
}

void BeautyPreview::request()
{
    m_isPending = true;
    if (!m_pause.isActive())
        send();
}

void BeautyPreview::send()
{
    m_isPending = false;
    m_pause.start();
    sendPicture();
    sendSound();
}

// Whole and in one step: between a clearing and new filters the picture would be seen without.
void BeautyPreview::sendPicture()
{
    QStringList filters;
    if (!m_isPlain) {
        for (int turn = 0; turn < std::abs(m_look.rotate); ++turn)
            filters +=
                m_look.rotate > 0 ? QStringLiteral("transpose=1") : QStringLiteral("transpose=2");
        filters += toneFilter(m_look) + balanceFilter(m_look);
        // Turned afterwards, one flip is seen as the other.
        if (m_isUpright ? m_look.hflip : m_look.vflip)
            filters += QStringLiteral("vflip");
        if (m_isUpright ? m_look.vflip : m_look.hflip)
            filters += QStringLiteral("hflip");
    }
    m_player->setVideoGraph(filters.join(QLatin1Char(',')));
}

// The look's own loudness is a factor on the samples, as in the file. The player's volume is the
// listener's, goes by the ear, and is left to the listener.
void BeautyPreview::sendSound()
{
    if (!qFuzzyCompare(std::exchange(m_speed, m_look.speed), m_look.speed))
        m_player->setSpeed(double(m_look.speed));
    if (qFuzzyCompare(std::exchange(m_volume, m_look.volume), m_look.volume))
        return;
    if (qFuzzyCompare(m_look.volume, 1.0F))
        m_player->clearAudioFilters();
    else
        m_player->audioFilter(FilterOperation::Set, QStringLiteral("volume"),
                              number(m_look.volume));
}
