// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Cut/fragmentpane.h"

#include "ui_fragmentpane.h"

#include <QPushButton>

namespace {

constexpr int rowHeight = 96;
constexpr QSize addButtonSize(128, 32);

} // namespace

FragmentPane::FragmentPane(QWidget *parent)
    : QWidget(parent),
      m_ui(std::make_unique<Ui::FragmentPane>()),
      m_addButton(new QPushButton(tr("截取到列表 >>"), this))
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    m_addButton->setObjectName(QStringLiteral("btnFragmentAdd"));
    m_addButton->setProperty("cls", QStringLiteral("accent"));
    m_addButton->setMinimumSize(addButtonSize);
    const QAbstractItemModel *rows = list()->model();
    connect(rows, &QAbstractItemModel::rowsInserted, this, &FragmentPane::showCount);
    connect(rows, &QAbstractItemModel::rowsRemoved, this, &FragmentPane::showCount);
    showCount();
}

FragmentPane::~FragmentPane() = default;

QListWidget *FragmentPane::list() const
{
    return m_ui->listWidget;
}

bool FragmentPane::isEmpty() const
{
    return list()->count() == 0;
}

void FragmentPane::showRow(QListWidgetItem *item, QWidget *row)
{
    item->setSizeHint({0, rowHeight});
    list()->setItemWidget(item, row);
    list()->scrollToItem(item);
}

void FragmentPane::showCount()
{
    m_ui->lblCount->setText(isEmpty() ? QString() : QString::number(list()->count()));
    m_ui->swdtList->setCurrentWidget(isEmpty() ? m_ui->pageEmpty : m_ui->pageList);
}
