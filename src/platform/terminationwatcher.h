// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

/// Turns the system's wishes that this process end (Ctrl-C, a closed terminal, a log-out) into a
/// signal of the event loop, so that work can be stopped in good order. At most one object at a
/// time; the wishes have their earlier effect again when it goes. A wish that this process was
/// started to ignore stays ignored.
class TerminationWatcher : public QObject
{
    Q_OBJECT

public:
    explicit TerminationWatcher(QObject *parent = nullptr);
    ~TerminationWatcher() override;

signals:
    void requested();

private:
    void onWish();
};
