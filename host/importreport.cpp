#include "importreport.h"

QStringList ImportReport::lines() const {
  QStringList lines;
  for (const Entry &entry : entries_) {
    if (entry.count == 1)
      lines.append(QStringLiteral("%1 (%2)").arg(entry.what, entry.firstPlace));
    else
      lines.append(QStringLiteral("%1 times: %2 (first: %3)").arg(entry.count).arg(entry.what, entry.firstPlace));
  }
  return lines;
}

void ImportReport::add(const QString &what, const QString &where, bool isProblem) {
  problemCount_ += isProblem ? 1 : 0;
  const auto known = entryOf_.constFind(what);
  if (known != entryOf_.constEnd()) {
    ++entries_[*known].count;
    return;
  }
  entryOf_.insert(what, entries_.size());
  entries_.append({what, where, 1});
}
