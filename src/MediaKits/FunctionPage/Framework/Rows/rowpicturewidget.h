// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

/// The picture of a row's source, with the buttons that play and edit it lying over it.
class RowPictureWidget : public QWidget
{
    Q_OBJECT

public:
    explicit RowPictureWidget(QWidget *parent = nullptr);

    /// Stands in for a picture.
    void showPlaceholder(bool audio);
    /// Scales the picture into the frame; null leaves what is shown, as does the same one again.
    void showPicture(const QPixmap &picture);

    /// "btnPlaySrc"
    QPushButton *playButton() const { return m_btnPlay; }
    /// Shows the button of the row's editor under a name of its own.
    void setUpEditor(const QString &objectName, const QString &toolTip);
    /// Null without `setUpEditor`.
    QPushButton *editorButton() const { return m_btnEditor; }

private:
    QPushButton *addButton(const QString &objectName, const QString &toolTip, const QString &icon);

    QLabel *m_lblVideo;
    QWidget *m_buttons;
    QPushButton *m_btnPlay;
    QPushButton *m_btnEditor = nullptr;
    qint64 m_pictureKey = 0;
};
