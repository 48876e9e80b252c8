// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/timespaneditor.h"
#include "MediaKits/MediaTasksManager/shotseries.h"

#include <QSharedPointer>
#include <QTimer>
#include <QVariantMap>

class FragmentPane;
class MomentList;
class QListWidget;
class ShotIntervalEdit;
class ShotPictureEdit;

/// Picks the moments of one video that are to become pictures: single ones, or a series between two
/// times. Enter takes what is picked, Del removes the current one.
class FrameShotDialog : public TimeSpanEditor
{
    Q_OBJECT

public:
    explicit FrameShotDialog(QWidget *parent = nullptr);
    ~FrameShotDialog() override;

    /// Opens a video that was probed.
    void showSource(const QString &file, const QSharedPointer<MediaInfoData> &info);
    void setPicture(const QSize &size, double pixelAspect) override;
    void setDuration(int ms) override;

    /// Shows an earlier result, once the video is open; an empty one leaves what is shown.
    void setOptions(const QVariantMap &options);
    /// The keys "format", "images", "isPiiic" and "columns" of a `MutiImageTaskParam`.
    QVariantMap options() const;

protected:
    bool isChanged() const override;
    bool handleKey(const QKeyEvent &event) override;
    void showEvent(QShowEvent *event) override;

private slots:
    void on_btnFragmentAdd_clicked();
    void on_btnOk_clicked();
    void on_btnClear_clicked();
    void on_cbIsPiiic_toggled(bool checked);

private:
    QWidget *makeTabs();
    void setUpTimeSection();
    void setUpList();
    QListWidget *list() const;
    ShotSeries series() const;
    void showKind(bool isSeries);
    void showCount();
    QVariantMap moment(int ms) const;
    bool isAdding() const;
    void stopAdding();
    void addSeen();
    void onSettled();
    void addWaiting();
    void showAdding();
    void removeCurrent();

    ShotIntervalEdit *m_interval;
    ShotPictureEdit *m_picture;
    FragmentPane *m_pane;
    MomentList *m_moments;
    QPushButton *m_seriesTab = nullptr;
    QVariantMap m_shown;    // the result that leaving would go back to
    QVariantList m_waiting; // moments that have no row yet
    QTimer m_addTimer;
    QTimer m_settleTimer;    // runs while the frame to add has yet to be told
    bool m_byButton = false; // the present moments, which the list scrolls to
};
