// SPDX-License-Identifier: MIT
#include "webview/endingview.h"

#include "webview/page.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>
#include <QWebEngineProfile>
#include <QWebEngineView>

#include <csignal>

namespace {

constexpr int mostHurryMs = 3000;
constexpr int lookIntervalMs = 5;

} // namespace

EngineParts::EngineParts() = default;
EngineParts::EngineParts(EngineParts &&other) noexcept = default;
EngineParts::~EngineParts() = default;

EndingView::EndingView(EngineParts parts, QWidget &list) : m_parts(std::move(parts)), m_list(&list)
{
    list.hide();
    connect(&list, &QObject::destroyed, this, &QObject::deleteLater);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &EndingView::hurry);
    // The list goes with the process of its page, be that in a script that never ends.
    const qint64 process = m_parts.page->renderProcessPid();
    if (process > 0)
        ::kill(pid_t(process), SIGKILL);
}

void EndingView::hurry()
{
    const QDeadlineTimer deadline(mostHurryMs);
    while (m_list && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(lookIntervalMs);
    }
    delete this;
}
