// SPDX-License-Identifier: MIT
#pragma once

#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>

#include <chrono>

/// Where the marks go, and from whom.
struct A360SemConfig
{
    /// With an empty host nothing is ever reported.
    QString host;
    QString channel;
    /// The click on an advertisement that led to this installation.
    QString clickId;
};

/// Reports conversion marks to the marketing endpoint, for installations that came through the
/// channel "360" only.
class A360Sem : public QObject
{
    Q_OBJECT

public:
    explicit A360Sem(const A360SemConfig &config);
    ~A360Sem() override;

    /// The one that is configured by main.ini.
    static A360Sem &instance();

    /// Returns at once; the reply is only logged. Needs the application object.
    void report(const QString &event);
    /// Waits until what was reported is there, for a process that runs no event loop; at most for
    /// `limit`.
    void finish(std::chrono::milliseconds limit);

signals:
    void answered();

private:
    const A360SemConfig m_config;
    /// Made for the first report; goes with the application object at the latest.
    QPointer<QNetworkAccessManager> m_network;
    int m_open = 0; ///< reports without an answer
};
