#pragma once

#include <QAbstractListModel>

namespace tarnwik {

/// A list that tells QML how many rows it has.
class CountedListModel : public QAbstractListModel
{
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    int count() const { return rowCount(QModelIndex()); }

Q_SIGNALS:
    void countChanged();

protected:
    /// Whether \a index is one of this list's rows. Views may ask for others; checkIndex() would log that.
    bool hasRow(const QModelIndex &index) const { return index.isValid() && index.row() < count(); }
};

} // namespace tarnwik
