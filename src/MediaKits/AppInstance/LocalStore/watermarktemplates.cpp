// SPDX-License-Identifier: MIT
#include "MediaKits/AppInstance/LocalStore/watermarktemplates.h"

#include "MediaKits/AppInstance/LocalStore/appdirs.h"

namespace {
const QLatin1String templatesKey("templates");
}

WatermarkTemplates::WatermarkTemplates()
    : m_file(dataDir() + QStringLiteral("/WatermarkTemplates.json")),
      m_templates(m_file.read()[templatesKey].toObject()),
      m_asidePath(m_file.asidePath())
{
    m_file.compareWith({{templatesKey, m_templates}});
}

WatermarkTemplates &WatermarkTemplates::instance()
{
    static WatermarkTemplates templates;
    return templates;
}

bool WatermarkTemplates::set(const QString &name, const QJsonObject &value)
{
    m_templates[name] = value;
    return write();
}

bool WatermarkTemplates::remove(const QString &name)
{
    m_templates.remove(name);
    return write();
}

bool WatermarkTemplates::write()
{
    const QString before = m_file.asidePath();
    const bool isWritten = m_file.write({{templatesKey, m_templates}}, QJsonDocument::Compact);
    if (m_file.asidePath() != before)
        m_asidePath = m_file.asidePath();
    return isWritten;
}
