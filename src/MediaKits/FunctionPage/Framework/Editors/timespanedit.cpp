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

QWidget *TimeSpanEdit::startRow() const
{
    return m_ui->wdtTimeStart;
}

QWidget *TimeSpanEdit::endRow() const
{
    return m_ui->wdtTimeEnd;
}

QLabel *TimeSpanEdit::title() const
{
    return m_ui->lblTitleTime;
}

QLabel *TimeSpanEdit::startName() const
{
    return m_ui->lblStart;
}

void TimeSpanEdit::setStartName(const QString &name)
{
    m_ui->lblStart->setText(name);
    m_ui->tedtStart->setAccessibleName(QString(name).remove(tr("：")));
}

void TimeSpanEdit::setDisplayFormat(const QString &format)
{
    start()->setDisplayFormat(format);
    end()->setDisplayFormat(format);
}

void TimeSpanEdit::addRow(QWidget *row)
{
    m_ui->layoutTime->insertWidget(m_ui->layoutTime->count() - 1, row);
}
