#ifndef OAKIT_TABLECHECK_H
#define OAKIT_TABLECHECK_H

// What can be said of the tables of any database: references, spans, kinds, texts, properties. The checks of designs
// and technologies stand on this.

#include "claimedrows.h"
#include "database.h"
#include "findings.h"
#include "oa/oaBaseMsgIds.h"
#include "oa/oaEnumWrapper.h"
#include "oa/oaException.h"
#include "texts.h"

#include <algorithm>
#include <initializer_list>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

namespace OpenAccess_4 {
namespace kit {
namespace check {

class TableCheck {
public:
  TableCheck(Database &database, FileReport &report) : database_(database), report_(report) {}

  Database &database() const { return database_; }
  FileReport &report() const { return report_; }

  // Every reference and span of every column, the texts, the database object and the properties.
  void run(oaTypeEnum databaseType);

  // After run():
  const Texts &texts() const { return *texts_; }
  // The span of that row leads to elements that are there and that no other row owns.
  bool isSoundSpan(const ColumnBase &column, Row row) const;

  // Runs a part of a check. What lies in a damaged segment ends it; the segment is told already.
  template <typename Part> void guarded(Part part) const {
    try {
      part();
    } catch (const oaException &exception) {
      if (exception.getMsgId() != oacChecksumMismatch) {
        report_.damage({std::string(exception.getMsg()), {}});
      }
    } catch (const std::bad_alloc &) {
      report_.damage({"a check needs more memory than there is", {}});
    }
  }
  template <typename Visit> static void forEachRow(const Table &table, Visit visit) {
    for (Row row = table.nextAlive(kNoRow); row != kNoRow; row = table.nextAlive(row)) {
      visit(row);
    }
  }

  // All living rows are of one of these kinds.
  void checkKinds(const Table &table, std::initializer_list<std::uint8_t> kinds) const;
  // A stored value of the enumeration.
  template <typename Enum, typename Stored>
  void checkEnum(const Table &table, Row row, const Column<Stored> &column, Enum) const {
    checkValue(table, row, column.name(), column[row], oaEnumNamesOf(Enum()));
  }
  void checkValue(const Table &table, Row row, const char *column, std::uint32_t value, const oaEnumNames &names) const;
  // A stored number below `count`; 2 for truth values, a power of 2 for flags.
  void checkBelow(const Table &table, Row row, const Column<std::uint8_t> &column, std::uint32_t count) const;
  // A text that is there and not empty. False, with a finding, otherwise.
  bool checkName(const Table &table, Row row, const Column<Row> &column) const;
  // Keys with the rows that have them: each key may occur once.
  template <typename Key>
  void checkUnique(const Table &table, const char *column, std::vector<std::pair<Key, Row>> &keys,
                   const char *what) const {
    std::sort(keys.begin(), keys.end());
    for (std::size_t i = 1; i < keys.size(); ++i) {
      if (keys[i].first == keys[i - 1].first) {
        const Row other = keys[i - 1].second;
        report_.damage(table, keys[i].second, column, [&] {
          return Fault{std::string("has the ") + what + " of row " + std::to_string(other), {}};
        });
      }
    }
  }

private:
  // For each segment of the first rows whether it can be read; those that cannot are told with the checksums.
  static std::vector<bool> soundSegments(const ColumnBase &column, Row rows);
  void checkSpans(const Table &table);
  void checkSpans(const Table &table, const ColumnBase &column, const ColumnReference &reference);
  void checkReferences(const Table &table, const ColumnBase &column, const ColumnReference &reference);
  void tellLostTexts() const;
  void tellReference(const Table &table, const ColumnBase &column, Row row, std::uint16_t targetId, Row target) const;
  void checkDatabaseRow(oaTypeEnum type) const;

  Database &database_;
  FileReport &report_;
  std::unordered_map<std::uint16_t, ClaimedRows> claimed_; // of each pool
  std::unordered_map<const ColumnBase *, std::vector<bool>> soundSpans_;
  std::unique_ptr<Texts> texts_;
  std::uint64_t lostTexts_ = 0; // references to texts that are there and cannot be read
};

// The properties of all objects of a database.
void checkProperties(const TableCheck &check);

} // namespace check
} // namespace kit
} // namespace OpenAccess_4

#endif
