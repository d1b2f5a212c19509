#pragma once

#include "ui/model/CountedListModel.h"

#include <QList>

#include <algorithm>
#include <utility>

namespace tarnwik {

/// A list of the server's records, which is replaced as a whole and tells its views as little as it can: a list that
/// came again as it was tells them nothing, so that a refresh neither scrolls nor rebuilds what is on the screen.
///
/// Rows are the same where the records' identifiers are. Rows that came or went between the first and the last
/// difference are told as removed and inserted; all others keep their delegates.
template<typename Record>
class RecordListModel : public CountedListModel
{
public:
    int rowCount(const QModelIndex &parent) const final
    {
        return parent.isValid() ? 0 : static_cast<int>(m_records.size());
    }

    const QList<Record> &records() const { return m_records; }

    void setRecords(const QList<Record> &records)
    {
        const auto isSameRow = [](const Record &left, const Record &right) { return left.id == right.id; };
        const qsizetype former = m_records.size();
        const qsizetype common = std::min(former, records.size());
        const qsizetype head =
            std::mismatch(m_records.cbegin(), m_records.cbegin() + common, records.cbegin(), isSameRow).first
            - m_records.cbegin();
        const qsizetype tail =
            std::mismatch(m_records.crbegin(), m_records.crbegin() + (common - head), records.crbegin(), isSameRow)
                .first
            - m_records.crbegin();

        remove(head, former - head - tail);
        insert(records, head, records.size() - head - tail);
        replace(records);
        if (records.size() != former)
            Q_EMIT countChanged();
    }

protected:
    /// Whether a row looks the same for both: then there is nothing to draw anew.
    virtual bool looksLike(const Record &left, const Record &right) const = 0;

private:
    void remove(qsizetype first, qsizetype count)
    {
        if (count == 0)
            return;
        beginRemoveRows({}, static_cast<int>(first), static_cast<int>(first + count - 1));
        m_records.remove(first, count);
        endRemoveRows();
    }

    void insert(const QList<Record> &records, qsizetype first, qsizetype count)
    {
        if (count == 0)
            return;
        beginInsertRows({}, static_cast<int>(first), static_cast<int>(first + count - 1));
        m_records = m_records.first(first) + records.sliced(first, count) + m_records.sliced(first);
        endInsertRows();
    }

    /// Takes \a records for rows that stand already, and tells of those that look otherwise now, a run at a time.
    void replace(const QList<Record> &records)
    {
        const QList<Record> former = std::exchange(m_records, records);
        const auto hasChanged = [&](qsizetype row) { return !looksLike(former[row], m_records[row]); };
        for (qsizetype row = 0; row < m_records.size(); ++row) {
            if (!hasChanged(row))
                continue;
            const qsizetype first = row;
            while (row + 1 < m_records.size() && hasChanged(row + 1))
                ++row;
            Q_EMIT dataChanged(index(static_cast<int>(first)), index(static_cast<int>(row)));
        }
    }

    QList<Record> m_records;
};

} // namespace tarnwik
