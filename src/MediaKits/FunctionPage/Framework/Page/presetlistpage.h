// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Page/listpage.h"

class MediaFormatDialog;
class QLabel;
class QPushButton;

/// Base of the list pages whose rows convert to a preset of the catalogue.
class PresetListPage : public ListPage
{
    Q_OBJECT

public:
    using ListPage::ListPage;

    void on_btnFormatSet_clicked();

protected:
    void setUpChoices(QWidget *choices) override;
    /// Whether the presets that keep everything as in the source are left out.
    virtual bool hidesKeepSource() const { return false; }
    /// Limits the offer of the page's format dialog.
    virtual void setUpFormatDialog(MediaFormatDialog &) {}

private:
    void setEncParamInfoID(quint32 id);

    QLabel *m_lblTextFormatSet = nullptr;
    QPushButton *m_btnFormatSet = nullptr;
};
