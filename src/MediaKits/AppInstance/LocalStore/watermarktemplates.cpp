// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/watermarktemplates.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"

namespace {
const QLatin1String templatesKey("templates");
}

WatermarkTemplates::WatermarkTemplates()
    : m_file(dataDir() + QStringLiteral("/WatermarkTemplates.json")),
      m_templates(m_file.read()[templatesKey].toObject())
{
}

WatermarkTemplates &WatermarkTemplates::instance()
{
    static WatermarkTemplates templates;
    return templates;
}

void WatermarkTemplates::set(const QString &name, const QJsonObject &value)
{
    m_templates[name] = value;
    write();
}

void WatermarkTemplates::remove(const QString &name)
{
    m_templates.remove(name);
    write();
}

void WatermarkTemplates::write()
{
    m_file.write({{templatesKey, m_templates}}, QJsonDocument::Compact);
}
