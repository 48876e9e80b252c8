// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Page/lazypage.h"

void LazyPage::ensureBuilt()
{
    if (m_isBuilt)
        return;
    m_isBuilt = true;
    build();
}

QString LazyPage::leaveQuestion() const
{
    return tr("有任务正在进行，退出会停止它们。确定退出吗？");
}

void LazyPage::showEvent(QShowEvent *event)
{
    ensureBuilt();
    QWidget::showEvent(event);
}
