// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Page/presetlistpage.h"

#include "catalogue/encparamcatalog.h"
#include "controls/iconpixmap.h"
#include "controls/popupplacement.h"
#include "MediaKits/AppInstance/LocalStore/functionsettings.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatdialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVariant>

namespace {

constexpr int popupGap = 11;
constexpr QSize arrowSize(12, 12);
// For the longest name of the catalogue.
constexpr int buttonWidth = 220;

} // namespace

void PresetListPage::setUpChoices(QWidget *choices)
{
    auto *row = new QHBoxLayout(choices);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(new QLabel(tr("输出格式："), choices));
    m_btnFormatSet = new QPushButton(choices);
    m_btnFormatSet->setObjectName(QStringLiteral("btnFormatSet"));
    m_btnFormatSet->setProperty("cls", QStringLiteral("choice"));
    m_btnFormatSet->setAccessibleName(tr("输出格式"));
    m_btnFormatSet->setMinimumWidth(buttonWidth);
    row->addWidget(m_btnFormatSet);
    m_lblTextFormatSet = new QLabel(tr("选择格式"), m_btnFormatSet);
    m_lblTextFormatSet->setObjectName(QStringLiteral("lblTextFormatSet"));
    m_lblTextFormatSet->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *inner = new QHBoxLayout(m_btnFormatSet);
    inner->setContentsMargins(12, 0, 8, 0);
    inner->addWidget(m_lblTextFormatSet, 1);
    auto *arrow = new QLabel(m_btnFormatSet);
    arrow->setPixmap(iconPixmap(QStringLiteral(":/drawable/dropdown.png"), arrowSize));
    arrow->setAttribute(Qt::WA_TransparentForMouseEvents);
    inner->addWidget(arrow);
    connect(m_btnFormatSet, &QPushButton::clicked, this, &PresetListPage::on_btnFormatSet_clicked);
    setEncParamInfoID(setting(FunctionKey::encParamID).toUInt());
}

void PresetListPage::setEncParamInfoID(quint32 id)
{
    rows().setEncParamInfoID(id);
    const EncParamCatalog &catalogue = EncParamCatalog::instance();
    const auto preset = catalogue.encParam(id);
    if (preset)
        m_lblTextFormatSet->setText(catalogue.labelOf(*preset));
    m_btnFormatSet->setAccessibleDescription(m_lblTextFormatSet->text());
}

void PresetListPage::on_btnFormatSet_clicked()
{
    auto *dialog = new MediaFormatDialog(rows().encParamInfoID(), hidesKeepSource(), this);
    setUpFormatDialog(*dialog);
    connect(dialog, &MediaFormatDialog::encParamInfoIDPicked, this, [this](quint32 id) {
        storeSetting(FunctionKey::encParamID, id);
        setEncParamInfoID(id);
    });
    placeAbove(dialog, m_btnFormatSet, Qt::AlignLeft, popupGap);
    dialog->show();
}
