// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <QVariantMap>
#include <QWidget>

#include <memory>

class QListWidgetItem;
class WindowShadow;

namespace Ui {
class MediaPreviewWnd;
}

/// The one window that plays finished files, and their list. It is made when first needed and goes
/// with the main window.
class MediaPreviewWnd : public QWidget
{
    Q_OBJECT

public:
    ~MediaPreviewWnd() override;

    /// Takes a file that a task has finished; opens the window unless the user turned that off.
    /// While a modal dialog is open, which would lie above and may play itself, that waits for the
    /// dialog's end.
    /// @param info "event" (string) and "track" (map with "pageIndex" and "video_preview_mode")
    static void addFinished(const QString &path, const QVariantMap &info);
    /// Opens the window on a file of the list.
    static void showFile(const QString &path, const QVariantMap &info);

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void closeEvent(QCloseEvent *event) override;
    /// Space plays and pauses, Escape closes.
    void keyPressEvent(QKeyEvent *event) override;

private slots:
    void on_btnClose_clicked();
    void on_btnPlay_toggled(bool checked);
    void on_btnVolume_clicked();
    void on_btnOpenDir_clicked();
    void on_comboBox_currentIndexChanged(int index);
    void on_lwIconPlaylist_currentItemChanged(QListWidgetItem *current, QListWidgetItem *previous);
    void on_lwIconPlaylist_itemClicked(QListWidgetItem *item);

private:
    MediaPreviewWnd();
    static MediaPreviewWnd &instance();

    void readSettings();
    void connectPlayer();
    void seekTo(int ms);
    void addFinishedFile(const QString &path, const QVariantMap &info);
    void playLast();
    void openAfter(QWidget *dialog);
    void showListedFile(const QString &path, const QVariantMap &info);
    QListWidgetItem *entryOf(const QString &path) const;
    QListWidgetItem *addEntry(const QString &path, const QVariantMap &info);
    void setEntryPlaying(QListWidgetItem *entry, bool playing);
    void playItem(QListWidgetItem *entry);
    void removeEntryLater(QListWidgetItem *entry, QObject *toast);
    void stopCurrent();
    /// @param position ms, below 0 when unknown; @param duration ms, likewise
    void updateProgress(long position, double duration, double percent);
    void onFinished(int exitCode);
    void showPlaying(bool playing);
    void open();
    QWidget *toast(const QString &text, int ms);

    std::unique_ptr<Ui::MediaPreviewWnd> m_ui;
    bool m_autoPreview = true;
    QPointer<QWidget> m_waitsFor; // a modal dialog
};
