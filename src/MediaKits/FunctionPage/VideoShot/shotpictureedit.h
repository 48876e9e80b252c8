// SPDX-License-Identifier: MIT
#pragma once

#include <QVariantMap>
#include <QWidget>

#include <memory>

namespace Ui {
class ShotPictureEdit;
}

/// What becomes of the moments: format and scale, and whether they are laid together into one
/// picture, on top of each other or as a sheet.
class ShotPictureEdit : public QWidget
{
    Q_OBJECT

public:
    explicit ShotPictureEdit(QWidget *parent = nullptr);
    ~ShotPictureEdit() override;

    /// The keys "format", "isPiiic" and "columns" of a `MutiImageTaskParam`.
    QVariantMap options() const;
    void setOptions(const QVariantMap &options);
    /// 1.0 for the video's size.
    float scale() const;

signals:
    void stitchToggled(bool on);

private:
    const std::unique_ptr<Ui::ShotPictureEdit> m_ui;
};
