// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/VideoWatermark/templatemenu.h"

#include "controls/runmodal.h"
#include "MediaKits/AppInstance/LocalStore/watermarktemplates.h"
#include "MediaKits/FunctionPage/Framework/Dialogs/mediamessagebox.h"
#include "MediaKits/FunctionPage/VideoWatermark/markjson.h"
#include "MediaKits/FunctionPage/VideoWatermark/templatenamedialog.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace {

const QLatin1String marksKey("marks");
const QLatin1String widthKey("width");
const QLatin1String heightKey("height");
const QLatin1String aspectKey("pixelAspect");
const QLatin1String durationKey("duration");
// Beyond what any picture has: the file may be damaged.
constexpr int mostPixels = 65536;
constexpr double mostAspect = 100.0;

// In a menu an ampersand stands for a key.
QString menuText(QString name)
{
    return name.replace(QLatin1Char('&'), QLatin1String("&&"));
}

void tellUnlessWritten(bool isWritten, QWidget *parent)
{
    if (!isWritten)
        MediaMessageBox::showMessage(TemplateMenu::tr("错误"), TemplateMenu::tr("无法写入模板文件"),
                                     parent);
}

} // namespace

TemplateMenu::TemplateMenu(bool canSave, QWidget *parent) : QMenu(parent)
{
    const QStringList names = WatermarkTemplates::instance().names();
    for (const QString &name : names)
        addAction(menuText(name), this, [this, name] { emit chosen(name); });
    if (!names.isEmpty())
        addSeparator();
    addAction(tr("存为模板…"), this, &TemplateMenu::savingWanted)->setEnabled(canSave);
    QMenu *removal = addMenu(tr("删除模板"));
    removal->setEnabled(!names.isEmpty());
    for (const QString &name : names)
        removal->addAction(menuText(name), this, [this, name] { emit removalWanted(name); });
}

QString askTemplateName(QWidget *parent)
{
    const auto name = runModal(new TemplateNameDialog(parent),
                               [](const TemplateNameDialog &dialog) { return dialog.name(); });
    if (!name || name->isEmpty())
        return {};
    const bool mayTake =
        !WatermarkTemplates::instance().names().contains(*name) ||
        MediaMessageBox::ask(TemplateMenu::tr("提示"),
                             TemplateMenu::tr("已有模板“%1”，要替换它吗？").arg(*name), parent);
    return mayTake ? *name : QString();
}

void askAndRemoveTemplate(const QString &name, QWidget *parent)
{
    if (MediaMessageBox::ask(TemplateMenu::tr("提示"),
                             TemplateMenu::tr("确定删除模板“%1”吗？").arg(name), parent))
        tellUnlessWritten(WatermarkTemplates::instance().remove(name), parent);
}

void tellOfBrokenTemplates(QWidget *parent)
{
    const QString path = WatermarkTemplates::instance().takeAsidePath();
    if (!path.isEmpty()) {
        MediaMessageBox::showMessage(TemplateMenu::tr("提示"),
                                     TemplateMenu::tr("模板文件已损坏，无法读取，原文件保留在：%1")
                                         .arg(QDir::toNativeSeparators(path)),
                                     parent);
    }
}

void saveTemplate(const QString &name, const QVariantList &marks, const MarkedPicture &picture,
                  QWidget *parent)
{
    QJsonArray entries;
    for (const QVariant &mark : marks)
        entries += markToJson(mark.toMap());
    const QJsonObject stored{{marksKey, entries},
                             {widthKey, picture.size.width()},
                             {heightKey, picture.size.height()},
                             {aspectKey, picture.pixelAspect},
                             {durationKey, picture.durationMs}};
    tellUnlessWritten(WatermarkTemplates::instance().set(name, stored), parent);
}

QVariantList templateFor(const QString &name, const MarkedPicture &picture)
{
    const QJsonObject stored = WatermarkTemplates::instance().value(name);
    MarkedPicture from;
    from.size = {qBound(0, stored[widthKey].toInt(), mostPixels),
                 qBound(0, stored[heightKey].toInt(), mostPixels)};
    from.pixelAspect = qBound(1.0 / mostAspect, stored[aspectKey].toDouble(1.0), mostAspect);
    from.durationMs = std::max(0, stored[durationKey].toInt());
    QVariantList marks;
    const QJsonArray entries = stored[marksKey].toArray();
    for (const QJsonValue &entry : entries) {
        const QVariantMap mark = markFromJson(entry.toObject());
        if (!mark.isEmpty())
            marks += mark;
    }
    return marksFor(marks, from, picture);
}
