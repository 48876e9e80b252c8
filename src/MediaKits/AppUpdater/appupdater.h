// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppUpdater/minidownloader.h"
#include "MediaKits/AppUpdater/updaterecord.h"
#include "MediaKits/AppUpdater/updatesettings.h"
#include "platform/directorylock.h"

#include <QObject>

#include <functional>
#include <optional>

class MiniDownloadObject;

/// Keeps the installation current: looks for a new version, fetches its package, and hands it to
/// the program that installs it.
class AppUpdater : public QObject
{
    Q_OBJECT

public:
    explicit AppUpdater(const UpdateSettings &settings = UpdateSettings::ofProgram());

    static AppUpdater &instance();

    const UpdateSettings &settings() const { return m_settings; }

    /// For program start: installs what an earlier run has fetched, or else looks for a new version
    /// in the background, and fetches one that is to be installed without asking.
    /// @return whether an update is now being installed, so that the start has to end
    bool run();

    /// Asks the service and waits for its answer in an event loop of its own; at most ten seconds.
    /// False when that failed, or an earlier call still waits.
    bool check(UpdateRecord &record);
    bool isChecking() const { return m_isChecking; }

    /// Fetches the package of an update that the user asked for. As MiniDownloader::download().
    MiniDownloadObject *downloadAsked(const UpdateRecord &record);
    static QString askedPackage();
    /// Why a package that was fetched can't be installed, for the user; empty when it can.
    QString refusalOf(const QString &package) const;

    /// Has the package installed as soon as this program has ended, and the program started anew.
    /// False when that can't be.
    bool launchUpdater(const QString &package);

    /// For a program whose window is there: tells the one that installed it, or clears away what
    /// that one left behind.
    /// @return why an update failed before this start, for the user; otherwise empty
    QString confirmStart();

signals:
    /// Of a download without asking; in bytes, `total` is -1 while it isn't known.
    void downloadProgress(qlonglong received, qlonglong total);
    /// The check and the download that run() began have ended.
    void idle();

private:
    using Answer = std::function<void(const std::optional<UpdateRecord> &record)>;

    void ask(const Answer &answer);
    bool applyPending();
    void downloadSilently(const UpdateRecord &record);
    void noteFetched(const UpdateRecord &record);
    void rest();
    void clearLeftovers();

    const UpdateSettings m_settings;
    MiniDownloader m_downloader;
    DirectoryLock m_lock;
    bool m_isChecking = false;
};
