// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/ScreenRecord/recordkeys.h"

#include <utility>

namespace {
constexpr Qt::KeyboardModifiers modifiers = Qt::ControlModifier | Qt::AltModifier;
} // namespace

RecordKeys::RecordKeys(QObject *parent) : QObject(parent)
{
    const std::pair<Qt::Key, QString> keys[] = {{Qt::Key_R, tr("开始或停止录制")},
                                                {Qt::Key_P, tr("暂停或继续")}};
    for (const auto &[key, meaning] : keys) {
        const QString name = QStringLiteral("Ctrl+Alt+") + QChar(key);
        if (m_keys.hold(key, modifiers))
            m_held += tr("%1 %2").arg(name, meaning);
        else
            m_taken += name;
    }
    connect(&m_keys, &GlobalKeys::pressed, this, [this](Qt::Key key) {
        if (key == Qt::Key_R)
            emit startStopPressed();
        else
            emit pausePressed();
    });
}

QString RecordKeys::hint() const
{
    return m_held.isEmpty() ? QString() : tr("随时可用的快捷键：%1").arg(m_held.join(tr("，")));
}

QString RecordKeys::remark() const
{
    return m_taken.isEmpty() ? QString()
                             : tr("快捷键 %1 已被其他程序占用，请用本页的按钮或托盘图标控制录制")
                                   .arg(m_taken.join(tr("、")));
}
