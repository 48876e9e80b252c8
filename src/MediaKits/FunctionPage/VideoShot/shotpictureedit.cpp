// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/shotpictureedit.h"

#include "ui_shotpictureedit.h"

namespace {

constexpr float percent = 100.0F;
const QString formatKey = QStringLiteral("format");
const QString stitchKey = QStringLiteral("isPiiic");
const QString columnsKey = QStringLiteral("columns");

} // namespace

ShotPictureEdit::ShotPictureEdit(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::ShotPictureEdit>())
{
    m_ui->setupUi(this);
    m_ui->sbColumns->setEnabled(false);
    connect(m_ui->cbIsPiiic, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            m_ui->cbIsSheet->setChecked(false);
        emit stitchToggled(on);
    });
    connect(m_ui->cbIsSheet, &QCheckBox::toggled, this, [this](bool on) {
        if (on)
            m_ui->cbIsPiiic->setChecked(false);
        m_ui->sbColumns->setEnabled(on);
    });
}

ShotPictureEdit::~ShotPictureEdit() = default;

QVariantMap ShotPictureEdit::options() const
{
    return {{formatKey, m_ui->cbFormat->currentText()},
            {stitchKey, m_ui->cbIsPiiic->isChecked()},
            {columnsKey, m_ui->cbIsSheet->isChecked() ? m_ui->sbColumns->value() : 0}};
}

void ShotPictureEdit::setOptions(const QVariantMap &options)
{
    m_ui->cbFormat->setCurrentText(options.value(formatKey).toString());
    m_ui->cbIsPiiic->setChecked(options.value(stitchKey).toBool());
    const int columns = options.value(columnsKey).toInt();
    m_ui->cbIsSheet->setChecked(columns > 0);
    if (columns > 0)
        m_ui->sbColumns->setValue(columns);
}

float ShotPictureEdit::scale() const
{
    return float(m_ui->sbScale1->value()) / percent;
}
