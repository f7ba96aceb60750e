#pragma once

#include <QAbstractTableModel>

#include "image/DifferingRanges.h"

namespace burnwick {

// The ranges in which two images differ, a row each.
class DifferencesModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    const modBinFileInfo::DifferingRanges& Ranges() const { return Ranges_; }
    void SetRanges(modBinFileInfo::DifferingRanges ranges);

    // Rows as text, with tabs between the columns, under a line of headings.
    QString AsText(const QList<int>& rows) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    modBinFileInfo::DifferingRanges Ranges_;
};

}  // namespace burnwick
