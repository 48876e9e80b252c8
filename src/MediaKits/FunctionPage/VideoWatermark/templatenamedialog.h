// SPDX-License-Identifier: MIT
#pragma once

#include "controls/dialogframe.h"

class QLineEdit;

/// Asks for the name of a template.
class TemplateNameDialog : public DialogFrame
{
    Q_OBJECT

public:
    explicit TemplateNameDialog(QWidget *parent = nullptr);
    /// Without blanks around it.
    QString name() const;

private:
    QLineEdit *m_name;
};
