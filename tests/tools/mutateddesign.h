#ifndef MUTATEDDESIGN_H
#define MUTATEDDESIGN_H

#include "columnfile.h"
#include "designdatabase.h"

#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

// Design files with right checksums and some wrong elements, chosen at random.
namespace mutateddesign {

using namespace OpenAccess_4;

inline std::uint32_t strangeNumber(std::mt19937 &random, std::uint32_t old) {
  switch (random() % 8) {
  case 0:
    return 0xffffffffu;
  case 1:
    return 0x7fffffffu;
  case 2:
    return old + 1;
  case 3:
    return old - 1;
  case 4:
    return old ^ (1u << random() % 32);
  default:
    return random() % 40; // a row or a kind that may well be there
  }
}

// Writes the design in `from` to the file `to`, with `changes` elements changed in tables that `accepts` takes. Gives
// what was changed, for messages.
inline std::string write(const std::string &from, const std::string &to, unsigned changes, std::mt19937 &random,
                         const std::function<bool(const kit::Table &)> &accepts) {
  kit::DesignDatabase design({}, "mutated", "layout");
  design.load(from);
  struct Bytes {
    const kit::Table *table;
    const kit::ColumnBase *column;
    std::vector<unsigned char> elements;
  };
  std::vector<Bytes> columns;
  std::vector<std::size_t> candidates;
  for (const kit::Table *table : design.tables()) {
    for (const kit::ColumnBase *column : table->columns()) {
      Bytes bytes{table, column, std::vector<unsigned char>(std::size_t(column->size()) * column->elementBytes())};
      for (kit::Row row = 0; row < column->size(); ++row) {
        std::memcpy(bytes.elements.data() + std::size_t(row) * column->elementBytes(), column->element(row),
                    column->elementBytes());
      }
      if (column->size() != 0 && accepts(*table)) {
        candidates.push_back(columns.size());
      }
      columns.push_back(std::move(bytes));
    }
  }
  std::string told;
  for (unsigned change = 0; change < changes; ++change) {
    Bytes &bytes = columns[candidates[random() % candidates.size()]];
    const std::uint32_t width = bytes.column->elementBytes();
    const kit::Row row = random() % bytes.column->size();
    unsigned char *element = bytes.elements.data() + std::size_t(row) * width;
    if (width < 4) {
      *element = static_cast<unsigned char>(strangeNumber(random, *element));
    } else {
      unsigned char *place = element + random() % (width / 4) * 4;
      std::uint32_t number;
      std::memcpy(&number, place, 4);
      number = strangeNumber(random, number);
      std::memcpy(place, &number, 4);
    }
    told += std::string(" ") + bytes.table->name() + "[" + std::to_string(row) + "]." + bytes.column->name();
  }
  kit::ColumnFileWriter writer(to);
  for (const kit::Table *table : design.tables()) {
    writer.beginTable(table->id(), table->name(), table->rowCount());
    for (const Bytes &bytes : columns) {
      if (bytes.table == table && !bytes.elements.empty()) {
        writer.beginColumn(bytes.column->id(), bytes.column->name(), bytes.column->elementBytes());
        writer.addElements(bytes.elements.data(), bytes.column->size());
        writer.endColumn();
      }
    }
  }
  writer.finish(static_cast<std::uint8_t>(kit::DatabaseKind::design));
  return told;
}

} // namespace mutateddesign

#endif
