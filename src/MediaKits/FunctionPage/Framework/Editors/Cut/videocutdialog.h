// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Editors/Cut/cutsettings.h"
#include "MediaKits/FunctionPage/Framework/Editors/Cut/videocuteditor.h"

#include <optional>

/// Marks what is to be kept of one video.
class VideoCutDialog : public VideoCutEditor
{
    Q_OBJECT

public:
    explicit VideoCutDialog(QWidget *parent = nullptr);

    /// Shows earlier results. After the size and the length of the medium are set.
    void setSettings(const CutSettings &settings);
    /// The result, once the dialog was accepted.
    CutSettings settings() const { return m_settings; }

    /// Opens the dialog for the file of a row.
    /// @param settings what the row holds
    /// @return what was saved; nothing when the user cancelled or the row has gone
    static std::optional<CutSettings> edit(const QString &file, const MediaInfoData &info,
                                           const CutSettings &settings, QWidget *row);

protected:
    bool isChanged() const override;

private slots:
    void on_btnSave_clicked();

private:
    CutSettings marked() const;

    CutSettings m_settings;
};
