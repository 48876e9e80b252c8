// SPDX-License-Identifier: MIT
#include "MediaKits/FunctionPage/Framework/Page/lazypage.h"

void LazyPage::ensureBuilt()
{
    if (m_isBuilt)
        return;
    m_isBuilt = true;
    build();
}

void LazyPage::showEvent(QShowEvent *event)
{
    ensureBuilt();
    QWidget::showEvent(event);
}
