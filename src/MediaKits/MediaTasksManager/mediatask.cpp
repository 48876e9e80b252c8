// SPDX-License-Identifier: MIT
#include "MediaKits/MediaTasksManager/mediatask.h"

#include "MediaKits/Logger/logger.h"
#include "MediaKits/MediaTasksManager/failurecause.h"
#include "MediaKits/MediaTasksManager/mediatasksmanager.h"

#include <QMetaEnum>

MediaTask::MediaTask(const QString &name, const QString &groupId, QObject *parent)
    : QObject(parent), m_name(name), m_groupId(groupId)
{
    qRegisterMetaType<MediaTask::State>("MediaTask::State");
    qRegisterMetaType<MediaTask::Operate>("MediaTask::Operate");
    qRegisterMetaType<MediaTask *>("MediaTask*");
    qRegisterMetaType<QSharedPointer<MediaTask>>("QSharedPointer<MediaTask>");
    qRegisterMetaType<QSharedPointer<MediaTaskParam>>("QSharedPointer<MediaTaskParam>");
}

MediaTask::MediaTask(QObject *parent) : MediaTask(QString(), QString(), parent) {}

MediaTask::~MediaTask()
{
    if (m_manager)
        m_manager->removeTask(this);
    setState(DESTORIED);
}

std::shared_ptr<void> MediaTask::hold()
{
    std::shared_ptr<void> held = m_hold.lock();
    if (!held)
        m_hold = held = std::make_shared<char>();
    return held;
}

MediaTasksManager *MediaTask::manager() const
{
    return m_manager;
}

void MediaTask::setParam(MediaTaskParam *) {}

MediaTask::State MediaTask::allowedState(State wanted) const
{
    const bool underWay = m_state == RUNNING || m_state == PAUSED || m_state == RESUMED;
    if (wanted == STOPING && !underWay)
        return m_state;
    if (isFinal(wanted) && isFinal(m_state))
        return m_state;
    if (isFinal(wanted) && (m_state == STOPING || m_state == PAUSED))
        return STOPED;
    return wanted;
}

void MediaTask::setState(MediaTask::State s)
{
    const State next = allowedState(s);
    if (next == m_state)
        return;
    m_state = next;
    if (next == START) {
        m_failure = {};
        m_remarks = {};
    }
    const QPointer<MediaTask> alive(this);
    emit taskStateChanged(next);
    if (!alive)
        return;
    CLOG(INFO, "default") << metaObject()->className() << "####" << m_name << ':' << m_groupId
                          << ':' << QMetaEnum::fromType<State>().valueToKey(next);
}

bool MediaTask::enter(MediaTask::State s)
{
    const QPointer<MediaTask> alive(this);
    setState(s);
    return !alive.isNull();
}

void MediaTask::setOperate(MediaTask::Operate o)
{
    if (m_operate == o)
        return;
    m_operate = o;
    emit taskOperateChanged(o);
}

void MediaTask::fail(const TaskFailure &failure)
{
    CLOG(ERROR, "default") << failure.cause << ' ' << tellingLine(failure.report);
    // What fails while it is being stopped counts as stopped.
    if (allowedState(ERROR) == ERROR)
        m_failure = failure;
    setState(ERROR);
}

void MediaTask::failWithoutParam()
{
    fail(tr("未设置参数"));
}

void MediaTask::refuseParam() const
{
    CLOG(ERROR, "default") << QStringLiteral("参数类型不符") << ' ' << metaObject()->className();
}
