// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/mixpreview.h"

#include "MediaKits/MediaTasksManager/dubbingmix.h"
#include "MediaKits/Player/csvideoplayer.h"

#include <algorithm>

namespace {

constexpr int secondMs = 1000;
// Of a film that stands at its end.
constexpr int leastHeardMs = 1000;
// A frame may begin a little before the place that the player was sent to.
constexpr int toleranceMs = 100;

// As a word of the player's command language.
QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

MixPreview::MixPreview(CSVideoPlayer *player, QObject *parent)
    : QObject(parent), m_player(player), m_trial(nullptr)
{
    player->tellFrames();
    connect(player, &CSVideoPlayer::started, this, [this] {
        m_isLoaded = false;
        m_isGiven = false;
        expectBegin(m_heard.end);
    });
    connect(player, &CSVideoPlayer::finished, this, &MixPreview::stop);
    connect(player, &CSVideoPlayer::progressChanged, this, &MixPreview::onProgress);
    connect(&m_trial, &TrialConversion::made, this, &MixPreview::play);
    connect(&m_trial, &TrialConversion::failed, this, [this](const QString &cause) {
        stop();
        emit failed(cause);
    });
}

void MixPreview::start(const ConvertTaskParam &param, int fromMs)
{
    stop();
    const ConvertTaskParam excerpt = dubbingExcerpt(param, fromMs, lengthMs);
    m_made = *excerpt.timeRange;
    m_heard.start = std::max(std::min(fromMs, m_made.end - leastHeardMs), m_made.start);
    m_heard.end = std::min(m_heard.start + lengthMs, m_made.end);
    setState(Preparing);
    m_trial.start(excerpt, m_made);
}

void MixPreview::play()
{
    setState(Playing);
    m_isGiven = false;
    if (m_isLoaded)
        give();
    expectBegin(m_heard.start + secondMs);
    emit begins(m_heard.start);
}

// A further sound of the player's, which begins where the excerpt does. The number of the one that
// was heard before is kept in the player itself, in a text that is shown nowhere.
void MixPreview::give()
{
    m_player->sendCommand(QStringLiteral("set title ${=aid}"));
    m_player->sendCommand(QStringLiteral("raw audio-add %1 select").arg(quoted(m_trial.file())));
    m_player->sendCommand(QStringLiteral("set audio-delay %1").arg(m_made.start / secondMs));
    m_isGiven = true;
}

// The selected sound goes; one that belongs to the film is refused.
void MixPreview::takeBack()
{
    m_player->sendCommand(QStringLiteral("audio-remove"));
    m_player->sendCommand(QStringLiteral("set audio-delay 0"));
    m_player->sendCommand(QStringLiteral("set aid ${title}"));
}

void MixPreview::stop()
{
    if (m_state == Playing && m_isGiven)
        takeBack();
    m_trial.stop();
    setState(Off);
}

// Reports from before a jump come late: only then it counts where the player is.
void MixPreview::expectBegin(int beforeMs)
{
    m_hasBegun = false;
    m_latestBeginMs = beforeMs;
}

void MixPreview::onProgress()
{
    m_isLoaded = true;
    if (m_state != Playing)
        return;
    if (!m_isGiven)
        give();
    const int told = m_player->toldPosition();
    const bool isInside = told >= m_heard.start - toleranceMs && told < m_heard.end;
    if (m_hasBegun && (!isInside || beginsAnew(told))) {
        stop();
        emit ended();
        return;
    }
    m_hasBegun = m_hasBegun || (isInside && told < m_latestBeginMs);
    m_toldMs = told;
}

// At its end the film goes on at its beginning, which may be heard of the mix as well.
bool MixPreview::beginsAnew(int toldMs) const
{
    const int back = m_toldMs - toldMs;
    return toldMs < secondMs && m_toldMs > m_made.end - 2 * secondMs &&
           back > std::min(secondMs, m_made.end / 2);
}

void MixPreview::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged(state);
}
