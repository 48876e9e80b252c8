// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoDubbing/mixpreview.h"

#include "MediaKits/MediaTasksManager/dubbingmix.h"
#include "MediaKits/MediaTasksManager/grouptaskfactory.h"
#include "MediaKits/Player/csvideoplayer.h"

namespace {

const QString mixName = QStringLiteral("mix");

// As a word of the player's command language.
QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

MixPreview::MixPreview(CSVideoPlayer *player, QObject *parent) : QObject(parent), m_player(player)
{
}

MixPreview::~MixPreview()
{
    if (m_task)
        m_task->disconnect(this);
}

void MixPreview::start(const ConvertTaskParam &param, int fromMs)
{
    stop();
    auto *excerpt = new ConvertTaskParam(dubbingExcerpt(param, fromMs, lengthMs));
    m_folder = std::make_unique<QTemporaryDir>();
    excerpt->outputDir = m_folder->path();
    excerpt->outputName = mixName;
    m_span = *excerpt->timeRange;
    m_ownSounds = param.sourceInfo ? param.sourceInfo->audios.size() : 1;
    m_task.reset(createGroupTask(ComplexConvertKind));
    m_task->setParam(excerpt);
    connect(m_task.get(), &MediaTask::taskStateChanged, this, &MixPreview::onTaskState,
            Qt::QueuedConnection);
    setState(Preparing);
    m_task->start();
}

void MixPreview::onTaskState(MediaTask::State taskState)
{
    if (m_state != Preparing || sender() != m_task.get())
        return;
    if (taskState == MediaTask::FINISHED) {
        play();
    } else if (taskState == MediaTask::ERROR) {
        const QString cause = m_task->failure().cause;
        stop();
        emit failed(cause);
    }
}

// A further sound of the player's, which begins where the excerpt does.
void MixPreview::play()
{
    const QString file = m_folder->filePath(mixName + QLatin1String(".wav"));
    setState(Playing);
    m_player->sendCommand(QStringLiteral("audio-add %1 select").arg(quoted(file)));
    m_player->sendCommand(QStringLiteral("set audio-delay %1").arg(m_span.start / 1000));
    emit begins(m_span.start);
    m_hasBegun = false;
}

void MixPreview::stop()
{
    if (m_state == Playing) {
        m_player->sendCommand(QStringLiteral("audio-remove %1").arg(m_ownSounds + 1));
        m_player->sendCommand(QStringLiteral("set audio-delay 0"));
        if (m_ownSounds > 0)
            m_player->sendCommand(QStringLiteral("set aid 1"));
    }
    if (m_task) {
        m_task->disconnect(this);
        m_task->stop();
        m_task.release()->deleteLater();
    }
    setState(Off);
}

void MixPreview::follow(int positionMs)
{
    if (m_state != Playing)
        return;
    if (positionMs >= m_span.start && positionMs < m_span.end) {
        m_hasBegun = true;
    } else if (m_hasBegun) {
        stop();
        emit ended();
    }
}

void MixPreview::setState(State state)
{
    if (m_state == state)
        return;
    m_state = state;
    emit stateChanged(state);
}
