#include "store/TableDataSource.h"

void TableDataSource::setObjectValueForTableColumn(const QString &, const QString &, int) { }

void TableDataSource::didClickTableColumn(const QString &, bool) { }

std::optional<RgbaColour> TableDataSource::labelColorForRow(int) const
{
    return std::nullopt;
}
