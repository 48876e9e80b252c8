// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Cut/cropedit.h"

#include "MediaKits/FunctionPage/Framework/Editors/Mask/chopmaskadapter.h"
#include "ui_cropedit.h"

#include <QEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace {

// For typing alone, which may pass through any number.
constexpr int widestNumber = 99999;

void setLimit(QSpinBox *field, int maximum)
{
    const QSignalBlocker blocker(field);
    field->setMaximum(field->hasFocus() ? widestNumber : maximum);
}

} // namespace

CropEdit::CropEdit(ChopMaskAdapter *mask, QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::CropEdit>()), m_mask(mask)
{
    m_ui->setupUi(this);
    setObjectName(QStringLiteral("wdtChop"));
    connect(mask, &ChopMaskAdapter::chopRectChanged, this, &CropEdit::showRect);
    connectFields();
}

CropEdit::~CropEdit() = default;

void CropEdit::connectFields()
{
    for (QSpinBox *field : {m_ui->sbX, m_ui->sbY, m_ui->sbW, m_ui->sbH}) {
        field->installEventFilter(this);
        connect(field, qOverload<int>(&QSpinBox::valueChanged), this,
                [this, field] { edit(field); });
        connect(field, &QSpinBox::editingFinished, this, [this, field] { endEdit(field); });
    }
}

bool CropEdit::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn)
        static_cast<QSpinBox *>(watched)->setMaximum(widestNumber);
    return QWidget::eventFilter(watched, event);
}

void CropEdit::setPicture(const QSize &size, double pixelAspect)
{
    m_videoSize = size;
    m_mask->setVideoSize(size, pixelAspect);
    m_mask->setChopRect(QRect(QPoint(0, 0), size));
    showRect(QRect(QPoint(0, 0), size));
}

void CropEdit::setCrop(const QSharedPointer<CropBox> &crop)
{
    if (crop)
        m_mask->setChopRect(QRect(crop->x, crop->y, crop->width, crop->height));
}

QSharedPointer<CropBox> CropEdit::crop() const
{
    if (m_box == QRect(QPoint(0, 0), m_videoSize) || m_videoSize.isEmpty())
        return {};
    return QSharedPointer<CropBox>::create(
        CropBox{m_box.x(), m_box.y(), m_box.width(), m_box.height()});
}

// The frame follows each key; the numbers that only stood there on the way leave no trace.
void CropEdit::edit(QSpinBox *field)
{
    if (m_typed != field)
        m_before = m_box;
    m_typed = field;
    m_box = boxWith(field);
    showBox(field);
    if (!field->hasFocus())
        endEdit(field);
}

void CropEdit::endEdit(QSpinBox *field)
{
    if (m_typed == field) {
        const int asked = field->value();
        m_typed = nullptr;
        emit remarked(remarkOn(field, asked));
    }
    showBox(nullptr);
}

// The place is kept in front of the picture's last pixel, so that no box is without one.
QRect CropEdit::boxWith(const QSpinBox *field) const
{
    const int right = m_videoSize.width();
    const int bottom = m_videoSize.height();
    QRect box = m_before;
    if (field == m_ui->sbX) {
        box.moveLeft(std::clamp(field->value(), 0, std::max(right - 1, 0)));
        box.setWidth(std::min(box.width(), right - box.x()));
    } else if (field == m_ui->sbY) {
        box.moveTop(std::clamp(field->value(), 0, std::max(bottom - 1, 0)));
        box.setHeight(std::min(box.height(), bottom - box.y()));
    } else if (field == m_ui->sbW) {
        box.setWidth(std::clamp(field->value(), 1, std::max(right, 1)));
        box.moveLeft(std::min(box.x(), right - box.width()));
    } else {
        box.setHeight(std::clamp(field->value(), 1, std::max(bottom, 1)));
        box.moveTop(std::min(box.y(), bottom - box.height()));
    }
    return box;
}

QString CropEdit::remarkOn(const QSpinBox *field, int asked) const
{
    if (shownIn(field) != asked)
        return tr("超出了画面，已改为 %1").arg(shownIn(field));
    if (m_box.width() != m_before.width() && field != m_ui->sbW)
        return tr("超出了画面，宽度已改为 %1").arg(m_box.width());
    if (m_box.height() != m_before.height() && field != m_ui->sbH)
        return tr("超出了画面，高度已改为 %1").arg(m_box.height());
    if (m_box.x() != m_before.x() && field != m_ui->sbX)
        return tr("超出了画面，X坐标已改为 %1").arg(m_box.x());
    if (m_box.y() != m_before.y() && field != m_ui->sbY)
        return tr("超出了画面，Y坐标已改为 %1").arg(m_box.y());
    return {};
}

int CropEdit::shownIn(const QSpinBox *field) const
{
    if (field == m_ui->sbX)
        return m_box.x();
    if (field == m_ui->sbY)
        return m_box.y();
    return field == m_ui->sbW ? m_box.width() : m_box.height();
}

void CropEdit::showRect(const QRect &rect)
{
    m_typed = nullptr;
    m_box = rect;
    showBox(nullptr);
}

// What is being typed stands as it is.
void CropEdit::showBox(const QSpinBox *typed)
{
    {
        const QSignalBlocker blocker(m_mask);
        m_mask->setChopRect(m_box);
    }
    setLimit(m_ui->sbX, m_box.right());
    setLimit(m_ui->sbY, m_box.bottom());
    setLimit(m_ui->sbW, m_videoSize.width() - m_box.left());
    setLimit(m_ui->sbH, m_videoSize.height() - m_box.top());
    for (QSpinBox *field : {m_ui->sbX, m_ui->sbY, m_ui->sbW, m_ui->sbH}) {
        const QSignalBlocker blocker(field);
        if (field != typed)
            field->setValue(shownIn(field));
    }
}
