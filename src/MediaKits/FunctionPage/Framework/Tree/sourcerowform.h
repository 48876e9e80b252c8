// SPDX-License-Identifier: MIT
#pragma once

#include "MediaKits/FunctionPage/Framework/Rows/rowform.h"

#include <memory>

namespace Ui {
class SourceRowForm;
}

/// The widgets of the row of a source: what it is, how many fragments it has, and the button that
/// adds some, which stands out as long as there are none.
class SourceRowForm : public RowForm
{
    Q_OBJECT

public:
    /// @param name object name of the row's surface
    SourceRowForm(QLatin1String name, bool audio, QWidget *parent);
    ~SourceRowForm() override;

    void showContent(const RowContent &content) override;

signals:
    void addPressed();

private:
    void showHint(const RowContent &content);

    const std::unique_ptr<Ui::SourceRowForm> m_ui;
};
