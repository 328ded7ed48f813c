#include "panels/ActiveBorder.h"

#include <QGroupBox>

using namespace Qt::StringLiterals;

void setActiveBorder(QGroupBox *groupBox, bool active)
{
    groupBox->setStyleSheet(active ? u"border-color:blue;"_s : QString());
}
