// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/timespanedit.h"

#include "ui_timespanedit.h"

TimeSpanEdit::TimeSpanEdit(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::TimeSpanEdit>())
{
    m_ui->setupUi(this);
    connect(m_ui->btnSCapture, &QPushButton::clicked, this, &TimeSpanEdit::startCaptured);
    connect(m_ui->btnECapture, &QPushButton::clicked, this, &TimeSpanEdit::endCaptured);
}

TimeSpanEdit::~TimeSpanEdit() = default;

QTimeEdit *TimeSpanEdit::start() const
{
    return m_ui->tedtStart;
}

QTimeEdit *TimeSpanEdit::end() const
{
    return m_ui->tedtEnd;
}
