// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Editors/Cut/cropedit.h"

#include "MediaKits/FunctionPage/Framework/Editors/Mask/chopmaskadapter.h"
#include "ui_cropedit.h"

#include <QSignalBlocker>

#include <algorithm>

namespace {

void showInField(QSpinBox *field, int maximum, int value)
{
    const QSignalBlocker blocker(field);
    field->setMaximum(maximum);
    field->setValue(value);
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

// The place is kept in front of the picture's last pixel, so that no box is without one.
void CropEdit::connectFields()
{
    const auto connectField = [this](QSpinBox *field, const auto &edited) {
        connect(field, qOverload<int>(&QSpinBox::valueChanged), this, [this, edited](int value) {
            const QSignalBlocker blocker(m_mask);
            edited(value);
        });
    };
    connectField(m_ui->sbX, [this](int x) {
        m_mask->setChopX(x);
        m_ui->sbW->setMaximum(m_videoSize.width() - x);
    });
    connectField(m_ui->sbY, [this](int y) {
        m_mask->setChopY(y);
        m_ui->sbH->setMaximum(m_videoSize.height() - y);
    });
    connectField(m_ui->sbW, [this](int width) {
        m_mask->setChopW(width);
        m_ui->sbX->setMaximum(std::min(m_ui->sbX->value() + width, m_videoSize.width() - 1));
    });
    connectField(m_ui->sbH, [this](int height) {
        m_mask->setChopH(height);
        m_ui->sbY->setMaximum(std::min(m_ui->sbY->value() + height, m_videoSize.height() - 1));
    });
}

void CropEdit::setPicture(const QSize &size, double pixelAspect)
{
    m_videoSize = size;
    m_mask->setVideoSize(size, pixelAspect);
    m_mask->setChopRect(QRect(QPoint(0, 0), size));
}

void CropEdit::setCrop(const QSharedPointer<CropBox> &crop)
{
    if (crop)
        m_mask->setChopRect(QRect(crop->x, crop->y, crop->width, crop->height));
}

QSharedPointer<CropBox> CropEdit::crop() const
{
    const CropBox box{m_ui->sbX->value(), m_ui->sbY->value(), m_ui->sbW->value(),
                      m_ui->sbH->value()};
    const bool isWhole = box == CropBox{0, 0, m_videoSize.width(), m_videoSize.height()};
    if (isWhole || m_videoSize.isEmpty())
        return {};
    return QSharedPointer<CropBox>::create(box);
}

void CropEdit::showRect(const QRect &rect)
{
    showInField(m_ui->sbX, rect.right(), rect.left());
    showInField(m_ui->sbY, rect.bottom(), rect.top());
    showInField(m_ui->sbW, m_videoSize.width() - rect.left(), rect.width());
    showInField(m_ui->sbH, m_videoSize.height() - rect.top(), rect.height());
}
