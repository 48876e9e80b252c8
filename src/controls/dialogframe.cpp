// SPDX-License-Identifier: MIT
#include "controls/dialogframe.h"

#include "controls/titlebar.h"
#include "controls/windowshadow.h"
#include "controls/withinscreen.h"
#include "platform/windowmanager.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QTimer>
#include <QVariant>
#include <QVBoxLayout>

namespace {
constexpr int border = 1;
constexpr int titleHeight = 44;
constexpr int settleMs = 200;
constexpr QRgb borderColour = 0xFFE0E0E0;

// Now and then the window manager gives the keyboard to nobody, or Qt misses that the window has it
// again: it would be dead until a click.
void tellOfKeyboard(QWidget &window)
{
    if (QApplication::activeWindow() != nullptr)
        return;
    if (hasInputFocus(window.winId()))
        QApplication::setActiveWindow(&window);
    else
        window.activateWindow();
}

} // namespace

DialogFrame::DialogFrame(QWidget *parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(border, border, border, border);
    layout->setSpacing(0);
    layout->addWidget(makeTitleRow());
    m_body = new QWidget(this);
    m_body->setObjectName(QStringLiteral("wdtBody"));
    layout->addWidget(m_body, 1);
    connect(m_close, &QPushButton::clicked, this, &DialogFrame::on_btnClose_clicked);
    new WindowShadow(this);
}

QWidget *DialogFrame::makeTitleRow()
{
    auto *row = new TitleBar(this);
    row->setObjectName(QStringLiteral("titleBar"));
    row->setProperty("cls", QStringLiteral("titleBar"));
    row->setFixedHeight(titleHeight);
    m_title = new QLabel(row);
    m_title->setObjectName(QStringLiteral("lblTitle"));
    m_title->setProperty("cls", QStringLiteral("title"));
    m_close = new QPushButton(row);
    m_close->setObjectName(QStringLiteral("btnClose"));
    m_close->setProperty("cls", QStringLiteral("icon"));
    m_close->setIcon(QIcon(QStringLiteral(":/drawable/win_close.png")));
    m_close->setAccessibleName(tr("关闭"));
    m_close->setToolTip(tr("关闭"));
    // Escape is the keyboard's way; the first focus and Enter belong to the form.
    m_close->setFocusPolicy(Qt::NoFocus);
    m_close->setAutoDefault(false);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(16, 0, 8, 0);
    layout->addWidget(m_title, 1);
    layout->addWidget(m_close);
    return row;
}

QString DialogFrame::title() const
{
    return m_title->text();
}

void DialogFrame::setTitle(const QString &title)
{
    m_title->setText(title);
    setWindowTitle(title);
}

void DialogFrame::connectByName()
{
    // The close button is among the named ones.
    m_close->disconnect(this);
    QMetaObject::connectSlotsByName(this);
}

void DialogFrame::on_btnClose_clicked()
{
    reject();
}

void DialogFrame::setVisible(bool visible)
{
    if (visible && !isVisible())
        boundToScreen(*this);
    // While it is being hidden, nothing is active any more. One that isn't on the screen has never
    // been, but what would have had the keyboard meanwhile hasn't got it.
    const bool hadKeyboard =
        !visible && (isActiveWindow() || testAttribute(Qt::WA_DontShowOnScreen));
    QDialog::setVisible(visible);
    if (hadKeyboard)
        giveKeyboardBack(*this);
}

void DialogFrame::giveKeyboardBack(const QWidget &hidden)
{
    QWidget *below = hidden.parentWidget() ? hidden.parentWidget()->window() : nullptr;
    if (below == nullptr)
        return;
    QTimer::singleShot(settleMs, below, [below] {
        const QWidget *modal = QApplication::activeModalWidget();
        const bool isBarred = modal != nullptr && modal != below;
        if (!below->isVisible() || isBarred)
            return;
        tellOfKeyboard(*below);
    });
}

void DialogFrame::paintEvent(QPaintEvent *event)
{
    QDialog::paintEvent(event);
    // Without a compositor there is no shadow to tell the dialog from what lies below.
    QPainter painter(this);
    const QRegion frame = QRegion(rect()) - rect().adjusted(border, border, -border, -border);
    for (const QRect &side : frame)
        painter.fillRect(side, QColor::fromRgba(borderColour));
}
