#include "table_csv.h"

#include "store/atomic_write.h"

#include <QStringList>

namespace quorvex::gui {

bool export_table_csv(const QString& tab_separated, const QString& path, QString* error) {
    QString csv;
    for (const QString& line : tab_separated.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        QStringList cells = line.split(QLatin1Char('\t'));
        for (QString& cell : cells)
            if (cell.contains(QLatin1Char(',')) || cell.contains(QLatin1Char('"')))
                cell = QLatin1Char('"') + cell.replace(QLatin1Char('"'), QStringLiteral("\"\"")) +
                       QLatin1Char('"');
        csv += cells.join(QLatin1Char(',')) + QStringLiteral("\r\n");
    }
    std::string why;
    if (store::write_file_atomically(path.toStdString(), csv.toStdString(), &why)) return true;
    if (error) *error = QString::fromStdString(why);
    return false;
}

} // namespace quorvex::gui
