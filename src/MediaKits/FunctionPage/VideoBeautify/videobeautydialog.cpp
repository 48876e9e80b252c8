// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoBeautify/videobeautydialog.h"

#include "controls/interceptslider.h"
#include "MediaKits/FunctionPage/VideoBeautify/beautypreview.h"
#include "MediaKits/FunctionPage/VideoBeautify/filteritemwidget.h"
#include "MediaKits/MediaInfo/Facts/mediainfodata.h"
#include "MediaKits/MediaInfo/shownpicture.h"
#include "MediaKits/MediaTasksManager/readylook.h"
#include "MediaKits/Player/csvideoplayer.h"
#include "ui_videobeautydialog.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>

namespace {

enum Tab { VideoTab = 1, FilterTab = 2 };
enum FilterPage { ReadyPage, AdvancedPage };

constexpr int lookRole = Qt::UserRole + 1;
constexpr QSize lookSize(68, 74);
constexpr int turnsOfCircle = 4;
constexpr float percent = 100.0F;
constexpr QSize usualSize(748, 620);

int percentOf(float value)
{
    return qRound(value * percent);
}

QVariantMap mapOf(const ReadyLook &look)
{
    QVariantMap map{{QStringLiteral("name"), QString::fromUtf8(look.name)},
                    {QStringLiteral("imagefile"), QString::fromUtf8(look.picture)},
                    {QStringLiteral("cbs"), QVariant::fromValue(look.cbs)},
                    {QStringLiteral("rgb"), QVariant::fromValue(look.rgb)}};
    if (!look.isEnabled)
        map.insert(QStringLiteral("enable"), false);
    return map;
}

} // namespace

VideoBeautyDialog::VideoBeautyDialog(QWidget *parent)
    : EditorDialog(parent),
      m_ui(std::make_unique<Ui::VideoBeautyDialog>()),
      m_preview(new BeautyPreview(&player(), this))
{
    setObjectName(QStringLiteral("VideoBeautyDialog"));
    setTitle(tr("美化设置"));
    player().setProperty("cls", QStringLiteral("csplayer"));
    scrubBar().setObjectName(QStringLiteral("sliderProgress"));
    m_ui->setupUi(editorArea());
    addLooks();
    connectControls();
    offerForAll();
    showTab(VideoTab);
    resize(usualSize);
}

VideoBeautyDialog::~VideoBeautyDialog() = default;

void VideoBeautyDialog::addLooks()
{
    for (const ReadyLook &look : readyLooks()) {
        const QVariantMap map = mapOf(look);
        auto *item = new QListWidgetItem(m_ui->lwdtFilters);
        item->setData(lookRole, map);
        item->setData(Qt::AccessibleTextRole, map.value(QStringLiteral("name")));
        item->setSizeHint(lookSize);
        if (!map.value(QStringLiteral("enable"), true).toBool())
            item->setFlags(item->flags() & ~Qt::ItemIsEnabled);
        auto *widget = new FilterItemWidget(m_ui->lwdtFilters);
        widget->setText(map.value(QStringLiteral("name")).toString());
        widget->setImage(QLatin1String(":/drawable/videobeautydialog/") +
                         map.value(QStringLiteral("imagefile")).toString());
        widget->setEnabled(look.isEnabled);
        m_ui->lwdtFilters->setItemWidget(item, widget);
    }
    m_ui->lwdtFilters->setCurrentRow(-1);
}

void VideoBeautyDialog::connectControls()
{
    pair(m_ui->sliderVolume, m_ui->sbVolume);
    pair(m_ui->sliderSpeed, m_ui->sbSpeed);
    pair(m_ui->sliderContrast, m_ui->sbContrast);
    pair(m_ui->sliderBrightness, m_ui->sbBrightness);
    pair(m_ui->sliderSaturation, m_ui->sbSaturation);
    pair(m_ui->sliderR, m_ui->sbR);
    pair(m_ui->sliderG, m_ui->sbG);
    pair(m_ui->sliderB, m_ui->sbB);
    m_ui->btnGrpSetting->setId(m_ui->btnVideo, VideoTab);
    m_ui->btnGrpSetting->setId(m_ui->btnFilter, FilterTab);
    connect(m_ui->btnGrpSetting, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        if (checked)
            showTab(id);
    });
    connect(m_ui->cbVFlip, &QCheckBox::clicked, this, &VideoBeautyDialog::preview);
    connect(m_ui->cbHFlip, &QCheckBox::clicked, this, &VideoBeautyDialog::preview);
    connect(m_ui->btnRotateCW, &QPushButton::clicked, this,
            &VideoBeautyDialog::on_btnRotateCW_clicked);
    connect(m_ui->btnRotateCCW, &QPushButton::clicked, this,
            &VideoBeautyDialog::on_btnRotateCCW_clicked);
    connect(m_ui->btnHFilter, &QPushButton::toggled, this,
            &VideoBeautyDialog::on_btnHFilter_toggled);
    connect(m_ui->btnCompare, &QPushButton::pressed, m_preview,
            [this] { m_preview->setPlain(true); });
    connect(m_ui->btnCompare, &QPushButton::released, m_preview,
            [this] { m_preview->setPlain(false); });
    connect(m_ui->btnReset, &QPushButton::clicked, this, &VideoBeautyDialog::on_btnReset_clicked);
    connect(m_ui->lwdtFilters, &QListWidget::currentItemChanged, this,
            &VideoBeautyDialog::on_lwdtFilters_currentItemChanged);
    connect(confirmButton(), &QPushButton::clicked, this, &VideoBeautyDialog::on_btnSave_clicked);
}

// A slider may reach further than its box.
void VideoBeautyDialog::pair(QSlider *slider, QSpinBox *box)
{
    connect(slider, &QSlider::valueChanged, box, [slider, box](int value) {
        box->setValue(value);
        slider->setValue(box->value());
    });
    connect(box, qOverload<int>(&QSpinBox::valueChanged), slider, &QSlider::setValue);
    connect(box, qOverload<int>(&QSpinBox::valueChanged), this, &VideoBeautyDialog::preview);
}

void VideoBeautyDialog::pair(QSlider *slider, QDoubleSpinBox *box)
{
    connect(slider, &QSlider::valueChanged, box,
            [box](int value) { box->setValue(double(value) / double(percent)); });
    connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), slider,
            [slider](double value) { slider->setValue(percentOf(float(value))); });
    connect(box, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            &VideoBeautyDialog::preview);
}

// The surface fills its place: what is turned by a quarter has another shape.
void VideoBeautyDialog::setVideo(const VEncParam *video)
{
    if (!video)
        return;
    setFrameRate(video->frameRate);
    m_preview->setUpright(isUpright(*video));
}

void VideoBeautyDialog::showTab(int id)
{
    m_ui->swdtBeauty->setCurrentIndex(id - VideoTab);
    m_ui->btnHFilter->setVisible(id == FilterTab);
}

void VideoBeautyDialog::on_btnHFilter_toggled(bool checked)
{
    m_ui->swdtFilter->setCurrentIndex(checked ? AdvancedPage : ReadyPage);
    m_ui->btnHFilter->setText(checked ? tr("收起") : tr("高级设置"));
    if (checked)
        m_ui->lwdtFilters->setCurrentRow(-1);
}

void VideoBeautyDialog::turn(int quarters)
{
    m_rotate = (m_rotate + quarters) % turnsOfCircle;
    preview();
}

void VideoBeautyDialog::on_btnRotateCW_clicked()
{
    turn(1);
}

void VideoBeautyDialog::on_btnRotateCCW_clicked()
{
    turn(-1);
}

FilterItemWidget *VideoBeautyDialog::lookWidget(QListWidgetItem *item) const
{
    return item ? qobject_cast<FilterItemWidget *>(m_ui->lwdtFilters->itemWidget(item)) : nullptr;
}

void VideoBeautyDialog::on_lwdtFilters_currentItemChanged(QListWidgetItem *current,
                                                          QListWidgetItem *previous)
{
    if (FilterItemWidget *widget = lookWidget(previous))
        widget->setChecked(false);
    if (FilterItemWidget *widget = lookWidget(current))
        widget->setChecked(true);
    if (!current)
        return;
    const QVariantMap map = current->data(lookRole).toMap();
    const auto cbs = map.value(QStringLiteral("cbs"), QVariant::fromValue(CBSFilterParam()))
                         .value<CBSFilterParam>();
    const auto rgb = map.value(QStringLiteral("rgb"), QVariant::fromValue(RGBFilterParam()))
                         .value<RGBFilterParam>();
    {
        const QScopedValueRollback<bool> quiet(m_previewEnabled, false);
        VideoBeautyParam look;
        look.contrast = cbs.contrast;
        look.brightness = cbs.brightness;
        look.saturation = cbs.saturation;
        look.red = rgb.red;
        look.green = rgb.green;
        look.blue = rgb.blue;
        showColours(look);
    }
    preview();
}

void VideoBeautyDialog::showColours(const VideoBeautyParam &look)
{
    m_ui->sbContrast->setValue(percentOf(look.contrast));
    m_ui->sbBrightness->setValue(percentOf(look.brightness));
    m_ui->sbSaturation->setValue(percentOf(look.saturation));
    m_ui->sbR->setValue(percentOf(look.red));
    m_ui->sbG->setValue(percentOf(look.green));
    m_ui->sbB->setValue(percentOf(look.blue));
}

void VideoBeautyDialog::on_btnReset_clicked()
{
    {
        const QScopedValueRollback<bool> quiet(m_previewEnabled, false);
        const VideoBeautyParam neutral;
        showColours(neutral);
        m_ui->sbSpeed->setValue(double(neutral.speed));
        m_ui->sbVolume->setValue(percentOf(neutral.volume));
        m_rotate = 0;
        m_ui->lwdtFilters->setCurrentRow(-1);
    }
    preview();
}

void VideoBeautyDialog::setHasSound(bool hasSound)
{
    m_ui->lblVolume->setText(hasSound ? tr("播放音量：") : tr("没有声音："));
    for (QWidget *part :
         {static_cast<QWidget *>(m_ui->lblVolume), static_cast<QWidget *>(m_ui->sliderVolume),
          static_cast<QWidget *>(m_ui->sbVolume)})
        part->setEnabled(hasSound);
}

void VideoBeautyDialog::setParam(const QSharedPointer<VideoBeautyParam> &param)
{
    m_param = param;
    if (!param)
        return;
    {
        const QScopedValueRollback<bool> quiet(m_previewEnabled, false);
        // A look that was chosen sets boxes; what was stored holds.
        m_ui->lwdtFilters->setCurrentRow(param->filterIndex);
        showColours(*param);
        m_ui->sbVolume->setValue(percentOf(param->volume));
        m_ui->sbSpeed->setValue(double(param->speed));
        m_ui->cbHFlip->setChecked(param->hflip);
        m_ui->cbVFlip->setChecked(param->vflip);
        m_rotate = param->rotate;
    }
    preview();
}

VideoBeautyParam VideoBeautyDialog::shown() const
{
    VideoBeautyParam look;
    look.contrast = float(m_ui->sbContrast->value()) / percent;
    look.brightness = float(m_ui->sbBrightness->value()) / percent;
    look.saturation = float(m_ui->sbSaturation->value()) / percent;
    look.red = float(m_ui->sbR->value()) / percent;
    look.green = float(m_ui->sbG->value()) / percent;
    look.blue = float(m_ui->sbB->value()) / percent;
    look.rotate = m_rotate;
    look.volume = float(m_ui->sbVolume->value()) / percent;
    look.speed = float(m_ui->sbSpeed->value());
    look.vflip = m_ui->cbVFlip->isChecked();
    look.hflip = m_ui->cbHFlip->isChecked();
    look.filterIndex = m_ui->lwdtFilters->currentRow();
    return look;
}

void VideoBeautyDialog::preview()
{
    if (m_previewEnabled)
        m_preview->show(shown());
}

bool VideoBeautyDialog::isChanged() const
{
    return !isSameLook(shown(), m_param ? *m_param : VideoBeautyParam());
}

// A record of its own, since other rows may share the one that was shown.
void VideoBeautyDialog::on_btnSave_clicked()
{
    m_param = QSharedPointer<VideoBeautyParam>::create(shown());
    accept();
}
