// SPDX-License-Identifier: MIT
#include "platform/terminationwatcher.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

struct Wish
{
    int signal;
    struct sigaction before;
};

Wish wishes[] = {{SIGINT, {}}, {SIGTERM, {}}, {SIGHUP, {}}};

// A signal handler may do little more than write: the pipe carries the wish to the event loop.
int wishPipe[2] = {-1, -1};

extern "C" void onTerminationSignal(int)
{
    const int error = errno;
    const char byte = 0;
    const ssize_t written = write(wishPipe[1], &byte, 1);
    static_cast<void>(written);
    errno = error;
}

void takeOver(Wish &wish)
{
    struct sigaction action = {};
    action.sa_handler = onTerminationSignal;
    action.sa_flags = SA_RESTART;
    sigaction(wish.signal, nullptr, &wish.before);
    // Who started this process may have it ignore a wish, as nohup does with a closed terminal.
    if (wish.before.sa_handler != SIG_IGN)
        sigaction(wish.signal, &action, nullptr);
}

} // namespace

TerminationWatcher::TerminationWatcher(QObject *parent) : QObject(parent)
{
    if (pipe2(wishPipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto *notifier = new QSocketNotifier(wishPipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] { onWish(); });
    for (Wish &wish : wishes)
        takeOver(wish);
}

TerminationWatcher::~TerminationWatcher()
{
    if (wishPipe[0] < 0)
        return;
    for (const Wish &wish : wishes)
        sigaction(wish.signal, &wish.before, nullptr);
    for (int &end : wishPipe) {
        close(end);
        end = -1;
    }
}

void TerminationWatcher::onWish()
{
    char bytes[16];
    while (read(wishPipe[0], bytes, sizeof bytes) > 0) {
    }
    emit requested();
}
