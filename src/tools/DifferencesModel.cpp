#include "tools/DifferencesModel.h"

#include <QFontDatabase>
#include <string>
#include <utility>

#include "job/CompareTexts.h"

namespace burnwick {

namespace {

QString Column(const RangeLine& line, int column) {
    return QString::fromStdString(line.at(static_cast<std::size_t>(column)));
}

}  // namespace

void DifferencesModel::SetRanges(modBinFileInfo::DifferingRanges ranges) {
    beginResetModel();
    Ranges_ = std::move(ranges);
    endResetModel();
}

QString DifferencesModel::AsText(const QList<int>& rows) const {
    std::string text = TabbedLine(RangeHeadings());
    for (const int row : rows) {
        text += TabbedLine(RangeTexts(Ranges_.Kept().at(static_cast<std::size_t>(row))));
    }
    return QString::fromStdString(text);
}

int DifferencesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(Ranges_.Kept().size());
}

int DifferencesModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(RangeColumns);
}

QVariant DifferencesModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    if (role == Qt::FontRole) {
        return QFontDatabase::systemFont(QFontDatabase::FixedFont);
    }
    if (role != Qt::DisplayRole) {
        return {};
    }
    return Column(RangeTexts(Ranges_.Kept().at(static_cast<std::size_t>(index.row()))), index.column());
}

QVariant DifferencesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    }
    return role == Qt::DisplayRole ? Column(RangeHeadings(), section) : QVariant();
}

}  // namespace burnwick
