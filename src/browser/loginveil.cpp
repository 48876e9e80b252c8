// SPDX-License-Identifier: MIT
#include "browser/loginveil.h"

#include "controls/stylebackground.h"

#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVariant>
#include <QVBoxLayout>

namespace {

constexpr int barHeight = 44;
constexpr int ringSize = 20;
constexpr int ringWidth = 2;
constexpr int ringAngle = 100;
constexpr int turnMs = 16;
constexpr int turnDegrees = 6;
constexpr int patienceMs = 8000;
constexpr QRgb ringColour = 0xFF0088FF;
constexpr QRgb trackColour = 0xFFE6F4FF;

} // namespace

LoginBar::LoginBar(QWidget *parent) : TitleBar(parent), m_text(new QLabel(this))
{
    setProperty("cls", QStringLiteral("titleBar"));
    setFixedHeight(barHeight);
    m_text->setProperty("cls", QStringLiteral("title"));
    m_text->setTextFormat(Qt::PlainText);
    auto *close = new QPushButton(this);
    close->setObjectName(QStringLiteral("btnClose"));
    close->setProperty("cls", QStringLiteral("icon"));
    close->setIcon(QIcon(QStringLiteral(":/drawable/win_close.png")));
    close->setAccessibleName(tr("关闭"));
    close->setToolTip(tr("关闭"));
    close->setFocusPolicy(Qt::NoFocus);
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &LoginBar::closeClicked);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(16, 0, 8, 0);
    row->addWidget(m_text, 1);
    row->addWidget(close);
}

QString LoginBar::text() const
{
    return m_text->text();
}

void LoginBar::setText(const QString &text)
{
    m_text->setText(text);
}

BusyRing::BusyRing(QWidget *parent) : QWidget(parent)
{
    setFixedSize(ringSize, ringSize);
    connect(&m_turn, &QTimer::timeout, this, [this] {
        m_degrees = (m_degrees + turnDegrees) % 360;
        update();
    });
}

void BusyRing::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_turn.start(turnMs);
}

void BusyRing::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_turn.stop();
}

void BusyRing::paintEvent(QPaintEvent *)
{
    constexpr int parts = 16; // of a degree, as Qt counts angles
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect ring = rect().adjusted(ringWidth, ringWidth, -ringWidth, -ringWidth);
    painter.setPen(QPen(QColor::fromRgba(trackColour), ringWidth));
    painter.drawEllipse(ring);
    painter.setPen(QPen(QColor::fromRgba(ringColour), ringWidth, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(ring, -m_degrees * parts, ringAngle * parts);
}

LoginVeil::LoginVeil(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("loginVeil"));
    auto *bar = new LoginBar(this);
    connect(bar, &LoginBar::closeClicked, this, &LoginVeil::closeClicked);
    auto *logo = new QLabel(this);
    logo->setPixmap(QPixmap(QStringLiteral(":/drawable/logo.png")));
    logo->setAlignment(Qt::AlignCenter);
    auto *text = new QLabel(tr("正在打开登录页面…"), this);
    text->setObjectName(QStringLiteral("lblState"));
    QTimer::singleShot(patienceMs, text, [text] { text->setText(tr("网络较慢，仍在打开…")); });

    auto *state = new QHBoxLayout;
    state->setSpacing(8);
    state->addStretch();
    state->addWidget(new BusyRing(this));
    state->addWidget(text);
    state->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(1, 1, 1, barHeight);
    column->setSpacing(16);
    column->addWidget(bar);
    column->addStretch();
    column->addWidget(logo);
    column->addLayout(state);
    column->addStretch();
    parent->installEventFilter(this);
    resize(parent->size());
}

bool LoginVeil::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parent() && event->type() == QEvent::Resize)
        resize(parentWidget()->size());
    return false;
}

void LoginVeil::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    drawStyleBackground(&painter, this);
}
