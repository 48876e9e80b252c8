// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoShot/mediashotlistitemwidget.h"

#include "MediaKits/FunctionPage/VideoShot/frameshotdialog.h"
#include "MediaKits/MediaFormats/mediaformats.h"
#include "MediaKits/MediaFormats/mediatexts.h"
#include "MediaKits/MediaTasksManager/mutiimagetask.h"

#include <QDir>
#include <QFileInfo>
#include <QListWidgetItem>

namespace {

// The dialog's result, for the next time it is opened.
constexpr int optionsRole = Qt::UserRole + 10;

TaskRowWidget::Kind shotRows()
{
    TaskRowWidget::Kind kind;
    kind.function = MediaFunction::Shot;
    kind.reportsFailures = false;
    kind.needsPicture = true;
    kind.form.detail = QLatin1String("Res");
    kind.openEditor =
        static_cast<TaskRowWidget::Slot>(&MediaShotListItemWidget::on_btnShotSet_clicked);
    kind.form.editorButton = QLatin1String("btnShotSet");
    kind.form.editorText = MediaShotListItemWidget::tr(" 截图设置");
    kind.form.editorIcon = QStringLiteral(":/drawable/row_shot.png");
    kind.form.startText = MediaShotListItemWidget::tr("开始截图");
    kind.form.playsResult = false;
    kind.form.countsResults = true;
    return kind;
}

} // namespace

MediaShotListItemWidget::MediaShotListItemWidget(QListWidgetItem *item, QWidget *parent)
    : TaskRowWidget(RowItem(item), shotRows(), parent)
{
    renameResult(QFileInfo(sourcePath()).completeBaseName());
    showOptions();
    connect(task(), &MediaTask::taskStateChanged, this, [this](MediaTask::State state) {
        if (state == MediaTask::START)
            clearResults();
    });
    probeSource();
}

QVariantMap &MediaShotListItemWidget::map() const
{
    return static_cast<MutiImageTaskParam *>(task()->param())->map;
}

QString MediaShotListItemWidget::text(const char *key) const
{
    return map().value(QLatin1String(key)).toString();
}

QString MediaShotListItemWidget::outputPath() const
{
    if (!task())
        return {};
    if (!m_results.isEmpty())
        return m_results.first();
    return QDir(text("outputDir"))
        .absoluteFilePath(text("baseName") + QLatin1Char('.') + text("format"));
}

void MediaShotListItemWidget::setOutputDir(const QString &dir)
{
    map().insert(QStringLiteral("outputDir"), dir);
}

QString MediaShotListItemWidget::outputName() const
{
    return text("baseName");
}

void MediaShotListItemWidget::setOutputName(const QString &name)
{
    map().insert(QStringLiteral("baseName"), name);
}

QString MediaShotListItemWidget::outputFormat() const
{
    return text("format");
}

void MediaShotListItemWidget::onResultMoved(const QString &path)
{
    m_results += path;
    // Pictures that stay apart have their numbers behind the name.
    if (static_cast<MutiImageTask *>(task())->isOnePicture())
        renameResult(QFileInfo(path).completeBaseName());
}

void MediaShotListItemWidget::clearResults()
{
    m_results.clear();
    change([](RowContent &content) { content.out.size.clear(); });
}

// Of pictures there is nothing to probe but what is asked for.
void MediaShotListItemWidget::readResult()
{
    qint64 bytes = 0;
    for (const QString &path : m_results)
        bytes += QFileInfo(path).size();
    change([&](RowContent &content) { content.out.size = sizeText(bytes); });
}

void MediaShotListItemWidget::keepSource(const QSharedPointer<MediaInfoData> &info)
{
    map().insert(QStringLiteral("sourceInfo"), QVariant::fromValue(info));
    TaskRowWidget::keepSource(info);
}

void MediaShotListItemWidget::onSourceProbed(const MediaInfoData &info)
{
    change([&](RowContent &content) { content.in.detail = MediaFacts::sizeInPixels(info.video); });
    showOptions();
}

bool MediaShotListItemWidget::editorAllowed() const
{
    return TaskRowWidget::editorAllowed() && !isSpecialFormat(sourceSuffix());
}

void MediaShotListItemWidget::on_btnShotSet_clicked()
{
    const auto info = sourceInfo();
    if (!info)
        return;
    auto *dialog = new FrameShotDialog(this);
    dialog->showSource(sourcePath(), info);
    dialog->setOptions(item().data(optionsRole).toMap());
    edit(
        dialog, [](const FrameShotDialog &edited) { return edited.options(); },
        [this](const QVariantMap &options) { applyOptions(options); });
}

void MediaShotListItemWidget::applyOptions(const QVariantMap &options)
{
    item().listItem()->setData(optionsRole, options);
    for (auto it = options.begin(); it != options.end(); ++it)
        map().insert(it.key(), it.value());
    map().insert(QStringLiteral("inputUrl"), sourcePath());
    showOptions();
}

void MediaShotListItemWidget::showOptions()
{
    const int count = map().value(QStringLiteral("images")).toList().size();
    const bool isOne = map().value(QStringLiteral("isPiiic")).toBool();
    const bool isSheet = map().value(QStringLiteral("columns")).toInt() > 0;
    if (content().hindrance.isEmpty())
        task()->setEnabled(count > 0);
    change([&](RowContent &content) {
        content.startEnabled = count > 0;
        content.out.duration.clear();
        if (count == 0) {
            content.out.detail.clear();
            content.out.format.clear();
            return;
        }
        content.out.format = text("format").toUpper();
        content.out.detail = tr("数量：%1").arg(count);
        content.out.duration = tr("样式：%1")
                                   .arg(isSheet ? tr("图表")
                                        : isOne ? tr("长图")
                                                : tr("单张"));
        content.outputSuffix = QLatin1Char('.') + text("format").toLower();
    });
}
