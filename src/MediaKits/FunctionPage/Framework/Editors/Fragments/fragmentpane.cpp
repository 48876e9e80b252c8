// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Fragments/fragmentpane.h"

#include "ui_fragmentpane.h"

#include <QPushButton>

namespace {

constexpr QSize addButtonSize(128, 32);

} // namespace

FragmentPane::FragmentPane(const Kind &kind, QWidget *parent)
    : QWidget(parent),
      m_kind(kind),
      m_ui(std::make_unique<Ui::FragmentPane>()),
      m_addButton(new QPushButton(tr("截取到列表 >>"), this))
{
    m_ui->setupUi(this);
    setAttribute(Qt::WA_StyledBackground);
    m_addButton->setObjectName(QStringLiteral("btnFragmentAdd"));
    m_addButton->setProperty("cls", QStringLiteral("accent"));
    m_addButton->setMinimumSize(addButtonSize);
    if (m_kind.hasCurrent)
        list()->setSelectionMode(QAbstractItemView::SingleSelection);
    if (!m_kind.clearButton.isEmpty())
        addClearButton();
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

void FragmentPane::addClearButton()
{
    auto *button = new QPushButton(tr("清空"), this);
    button->setObjectName(m_kind.clearButton);
    button->setProperty("cls", QStringLiteral("link"));
    m_ui->layoutTitle->addWidget(button);
    connect(button, &QPushButton::clicked, this, &FragmentPane::clear);
}

void FragmentPane::clear()
{
    if (!isEmpty())
        list()->model()->removeRows(0, list()->count());
}

void FragmentPane::setTexts(const QString &title, const QString &empty)
{
    m_ui->lblTextFragment->setText(title);
    m_ui->lblEmpty->setText(empty);
    list()->setAccessibleName(title);
}

bool FragmentPane::isEmpty() const
{
    return list()->count() == 0;
}

void FragmentPane::showRow(QListWidgetItem *item, QWidget *row)
{
    item->setSizeHint({0, m_kind.rowHeight});
    list()->setItemWidget(item, row);
}

void FragmentPane::showCount()
{
    m_ui->lblCount->setText(isEmpty() ? QString() : QString::number(list()->count()));
    m_ui->swdtList->setCurrentWidget(isEmpty() ? m_ui->pageEmpty : m_ui->pageList);
}
