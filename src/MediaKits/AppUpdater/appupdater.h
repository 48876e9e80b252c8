// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/AppUpdater/minidownloader.h"
#include "MediaKits/AppUpdater/updaterecord.h"
#include "MediaKits/AppUpdater/updatesettings.h"
#include "platform/directorylock.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
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

    /// Fetches the package of an update that the user asked for, in the place of what run() began.
    /// As MiniDownloader::download(); null also while somebody else looks for updates.
    MiniDownloadObject *downloadAsked(const UpdateRecord &record);
    static QString askedPackage();

    using Verdict = std::function<void(const QString &refusal)>;
    /// Reads a package that was fetched, on a thread, and tells why it can't be installed, for the
    /// user; an empty text when it can.
    /// @param asker nobody is told when it is gone
    void examine(const QString &package, QObject *asker, const Verdict &verdict) const;

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

    bool takeLock();
    void ask(QObject *asker, const Answer &answer);
    bool applyPending();
    bool takeBack();
    bool isFetched(const UpdateRecord &record) const;
    void downloadSilently(const UpdateRecord &record);
    void noteFetched(const UpdateRecord &record, const QString &refusal);
    void rest();
    void stopBackground();
    void clearLeftovers();

    const UpdateSettings m_settings;
    DirectoryLock m_lock;
    /// Receiver of what run() began; without it an answer finds nobody.
    std::unique_ptr<QObject> m_background;
    QPointer<MiniDownloadObject> m_silent;
    QPointer<MiniDownloadObject> m_asked;
    bool m_isChecking = false;
    /// The last, since the end of its downloads is heard of above.
    MiniDownloader m_downloader;
};
