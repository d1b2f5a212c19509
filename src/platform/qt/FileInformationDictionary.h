#pragma once

#include "platform/InformationDictionary.h"

#include <QStringList>

namespace tarnwik {

/// The information dictionary in JSON files, each holding one object. They are read anew at every access.
class FileInformationDictionary final : public InformationDictionary
{
public:
    /// \a paths in the order of their precedence, the administrator's file before the installed one: the first that has
    /// a key tells its value. A file that is missing or malformed holds nothing.
    explicit FileInformationDictionary(QStringList paths);

    QVariant object(const QString &key) const override;

private:
    QStringList m_paths;
};

} // namespace tarnwik
