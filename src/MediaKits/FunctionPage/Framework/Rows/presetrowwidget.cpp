// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Rows/presetrowwidget.h"

#include "catalogue/encparamcatalog.h"
#include "controls/popupplacement.h"
#include "MediaKits/FunctionPage/Framework/Formats/mediaformatdialog.h"
#include "MediaKits/FunctionPage/Framework/Rows/convertspeedswitchmenu.h"

#include <iterator>

namespace {

constexpr int fastType = 2;
constexpr int popupGap = 11;

struct Speed
{
    const char *text;
    int encoderSpeed; ///< `speed` of the conversion
};
// By speed type, from 1.
constexpr Speed speeds[] = {
    {QT_TRANSLATE_NOOP("PresetRowWidget", "转换(原速)"), 0},
    {QT_TRANSLATE_NOOP("PresetRowWidget", "转换(极速)"), 2},
    {QT_TRANSLATE_NOOP("PresetRowWidget", "转换(闪电）"), 1},
};

QStringList startTexts()
{
    QStringList texts;
    for (const Speed &speed : speeds)
        texts += PresetRowWidget::tr(speed.text);
    return texts;
}

TaskRowWidget::Kind withPresetButtons(TaskRowWidget::Kind kind)
{
    if (kind.form.ownPreset)
        kind.form.settingsButton = QLatin1String("btnFormatSet");
    if (kind.form.startText.isEmpty())
        kind.form.startTexts = startTexts();
    return kind;
}

} // namespace

PresetRowWidget::PresetRowWidget(const RowItem &item, const Kind &kind, QWidget *parent)
    : ConvertRowWidget(item, withPresetButtons(kind), parent)
{
    if (kind.form.ownPreset)
        change([](RowContent &content) { content.settings = tr("选择格式"); });
    if (kind.form.startText.isEmpty())
        setSpeedType(fastType);
}

void PresetRowWidget::connectForm(TaskRowForm &form)
{
    connect(&form, &TaskRowForm::settingsPressed, this, &PresetRowWidget::on_btnFormatSet_clicked);
    connect(&form, &TaskRowForm::speedPressed, this, &PresetRowWidget::on_btnSpeedSwitch_clicked);
}

void PresetRowWidget::setEncParamInfoID(quint32 id)
{
    m_encParamInfoID = id;
    const EncParamCatalog &catalogue = EncParamCatalog::instance();
    const auto preset = catalogue.encParam(id);
    if (!preset) {
        const QString suffix = sourceSuffix().toUpper();
        param().format = suffix;
        change([&](RowContent &content) { content.out.format = suffix; });
        applyPreset(nullptr);
        return;
    }
    const QString suffix = catalogue.suffixOf(*preset);
    param().encParam = preset;
    param().format = suffix;
    change([&](RowContent &content) {
        content.out.format = suffix.toUpper();
        content.outputSuffix = QLatin1Char('.') + suffix;
        if (formKind().ownPreset)
            content.settings = catalogue.labelOf(*preset);
    });
    applyPreset(preset.data());
}

void PresetRowWidget::setSpeedType(int type)
{
    if (type < 1 || type > int(std::size(speeds)))
        return;
    param().speed = speeds[type - 1].encoderSpeed;
    change([type](RowContent &content) { content.speedType = type; });
}

void PresetRowWidget::on_btnFormatSet_clicked(QWidget *button)
{
    auto *dialog = new MediaFormatDialog(m_encParamInfoID, false, this);
    setUpFormatDialog(*dialog);
    connect(dialog, &MediaFormatDialog::encParamInfoIDPicked, this,
            &PresetRowWidget::setEncParamInfoID);
    placeBelow(dialog, button, Qt::AlignRight, popupGap);
    dialog->show();
}

void PresetRowWidget::on_btnSpeedSwitch_clicked(QWidget *button)
{
    auto *menu = new ConvertSpeedSwitchMenu(this);
    menu->setSpeedType(ConvertSpeedSwitchMenu::SpeedType(content().speedType));
    connect(menu, &ConvertSpeedSwitchMenu::speedTypeChanged, this,
            [this](ConvertSpeedSwitchMenu::SpeedType type) { setSpeedType(type); });
    placeBelow(menu, button, Qt::AlignRight, popupGap);
    menu->show();
}
