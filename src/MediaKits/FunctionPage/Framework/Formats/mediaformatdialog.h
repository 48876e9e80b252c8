// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include <memory>

class QAbstractButton;
class QListWidget;
class QListWidgetItem;

namespace Ui {
class MediaFormatDialog;
}

/// Popup in which the user picks a preset of the catalogue. Create it with `new`, connect
/// encParamInfoIDPicked, move it and call show(): it deletes itself when it closes. A pick goes to
/// the front of EncParamHistory.
class MediaFormatDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param id preset shown as selected; the catalogue's default stands in for an unknown one
    /// @param hideKeepSource leaves out the presets that keep everything as in the source
    MediaFormatDialog(quint32 id, bool hideKeepSource, QWidget *parent = nullptr);
    ~MediaFormatDialog() override;

    /// Limits the recent list to kinds of presets and shows their tabs alone.
    /// @param mask sum of 1 for audio and 2 for video
    /// @param show whether the tabs of `mask` are seen and those of the other kinds aren't, or
    ///        the other way round
    void setFormatTypes(int mask, bool show);
    /// What the picture's size becomes where a preset has none; shown beside such presets.
    void setOpenSize(const QSize &size);

signals:
    /// The user picked a preset; the dialog closes.
    void encParamInfoIDPicked(uint encParamInfoID);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void showEvent(QShowEvent *event) override;

private slots:
    void on_lWdtCategory_currentRowChanged(int currentRow);
    void on_lwdtParamInfos_itemClicked(QListWidgetItem *item);
    void on_lwdtHistory_itemClicked(QListWidgetItem *item);

private:
    void showPreset(quint32 id);
    void fillCategories(quint32 category);
    void fillPresets(quint32 category, quint32 current);
    void fillHistory();
    void addHistoryItem(quint32 id);
    void removeHistoryItem(QListWidgetItem *item);
    void onTabToggled(QAbstractButton *button, bool checked);
    bool isAllowed(quint32 id) const;
    void pick(const QListWidgetItem *item);

    const std::unique_ptr<Ui::MediaFormatDialog> m_ui;
    int m_allowed = 3;
    quint32 m_currentId = 0;
    QSize m_openSize;
    const bool m_hideKeepSource;
};
