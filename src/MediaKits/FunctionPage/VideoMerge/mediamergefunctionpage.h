// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/presetlistpage.h"

class MediaMergeListWidget;
class QLabel;
class QLineEdit;

/// The page that joins video files into one.
class MediaMergeFunctionPage : public PresetListPage
{
    Q_OBJECT

public:
    explicit MediaMergeFunctionPage(QWidget *parent = nullptr);

    // No slots: the base's form would connect what overrides its own a second time.
    void on_btnMerge_clicked();
    void on_btnConvertAll_clicked() override { on_btnMerge_clicked(); }
    void on_ledtOutName_textChanged(const QString &arg1);

protected:
    void setUpChoices(QWidget *choices) override;
    void setUpFormatDialog(MediaFormatDialog &dialog) override;
    /// The parts have to become alike.
    bool hidesKeepSource() const override { return true; }

private:
    void showResultSize();

    MediaMergeListWidget *m_list = nullptr;
    QLineEdit *m_ledtOutName = nullptr;
    QLabel *m_lblResultSize = nullptr;
};
