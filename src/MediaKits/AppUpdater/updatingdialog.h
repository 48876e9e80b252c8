// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"
#include "MediaKits/AppUpdater/updaterecord.h"

#include <QPointer>

#include <memory>

namespace Ui {
class UpdatingDialog;
}
class AppUpdater;
class MiniDownloadObject;

/// Fetches the package of an update and hands it on to be installed: accepted then, and the program
/// has to end. A failure is told in its place.
class UpdatingDialog : public DialogFrame
{
    Q_OBJECT

public:
    /// Begins at once.
    UpdatingDialog(AppUpdater &updater, const UpdateRecord &record, QWidget *parent = nullptr);
    /// Ends a download that still runs.
    ~UpdatingDialog() override;

private slots:
    void on_btnCancel_clicked();

private:
    void showProgress(qlonglong received, qlonglong total);
    void examine();
    void install(const QString &refusal);
    void fail(const QString &text);

    const std::unique_ptr<Ui::UpdatingDialog> m_form;
    AppUpdater &m_updater;
    QPointer<MiniDownloadObject> m_download;
};
