// SPDX-License-Identifier: MIT
#pragma once

#include <QSharedPointer>
#include <QSize>
#include <QWidget>

#include <memory>

class QSpinBox;

namespace Ui {
class GifSizeEdit;
}

/// The size and frame rate of a GIF. Width, height and scale follow each other, so that the picture
/// keeps its proportions. Beside them stands what comes of it.
class GifSizeEdit : public QWidget
{
    Q_OBJECT

public:
    explicit GifSizeEdit(QWidget *parent = nullptr);
    ~GifSizeEdit() override;

    /// The source's size in square pixels.
    void setVideoSize(const QSize &size);

    /// Null as long as it is that of the source, or when there is none.
    QSharedPointer<QSize> size() const;
    int frameRate() const;
    bool isChanged() const;

    /// Tells how large the GIF will be; -1 when that can't be told.
    void showBytes(qint64 bytes);
    /// The same is being found out.
    void showEstimating();

signals:
    void changed();
    /// The size by that of the source.
    void scaleChanged(double scale);
    /// What had to differ from what was asked for, in words for the user; empty for nothing.
    void remarked(const QString &remark);

private:
    void follow(const QSpinBox *edited, double scale);
    QSize shown() const;
    void showSize();
    void showEstimate(const QString &text, bool warns);

    const std::unique_ptr<Ui::GifSizeEdit> m_ui;
    QSize m_videoSize;
    QSize m_untouched; // what the boxes can show of it
};
