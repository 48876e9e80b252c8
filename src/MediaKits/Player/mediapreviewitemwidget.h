// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class MediaPreviewItemWidget;
}

/// One file of the preview's playlist: its picture, and whether it plays.
class MediaPreviewItemWidget : public QWidget
{
    Q_OBJECT

public:
    MediaPreviewItemWidget(const QString &path, QWidget *parent);
    ~MediaPreviewItemWidget() override;

    /// Sets the property "isPlaying", which the style sheet shows.
    void setPlaying(bool playing);

protected:
    bool event(QEvent *event) override;

private:
    void showPicture(const QPixmap &picture);

    const std::unique_ptr<Ui::MediaPreviewItemWidget> m_ui;
};
