#include "gdsindex.h"

#include <utility>

GdsIndex::GdsIndex(const GdsParser &parser, const CoordinateScale &scale, ImportReport &report)
    : parser_(parser), scale_(scale), report_(report) {
  parser.parseLibrary(*this);
  reportMissing();
  reportRecursion();
}

void GdsIndex::beginStructure(const QByteArray &name, qint64 offset) {
  current_ = number(name);
  GdsStructure &structure = structures_[static_cast<std::size_t>(current_)];
  if (name.isEmpty()) {
    report_.problem(QStringLiteral("a structure without a name is left out"), QStringLiteral("byte %1").arg(offset));
  } else if (structure.isDefined()) {
    report_.problem(QStringLiteral("a structure is defined again; the first definition is kept"),
                    GdsPlace{name, offset}.toString());
  } else {
    structure.offset = offset;
    return;
  }
  current_ = -1;
}

void GdsIndex::element(const GdsElement &element) {
  if (current_ < 0)
    return;
  if (!scale_.isIdentity()) {
    for (const QPoint &point : element.points) {
      checkScale(element, point.x());
      checkScale(element, point.y());
    }
    checkScale(element, element.width);
    checkScale(element, element.beginExtension);
    checkScale(element, element.endExtension);
  }
  if (element.kind == GdsRecordType::Sref || element.kind == GdsRecordType::Aref) {
    const auto placed = static_cast<std::size_t>(number(element.text));
    lastPlacedIn_.resize(structures_.size(), -1);
    if (lastPlacedIn_[placed] != current_) {
      lastPlacedIn_[placed] = current_;
      structures_[static_cast<std::size_t>(current_)].placed.push_back(static_cast<int>(placed));
    }
  }
}

void GdsIndex::endStructure() { current_ = -1; }

int GdsIndex::number(const QByteArray &name) {
  const auto known = numbers_.constFind(name);
  if (known != numbers_.constEnd())
    return *known;
  const auto added = static_cast<int>(structures_.size());
  structures_.push_back({name, -1, {}});
  numbers_.insert(name, added);
  return added;
}

void GdsIndex::checkScale(const GdsElement &element, int value) const {
  if (scale_.apply(value))
    return;
  throw GdsError(
      parser_.fileName(), element.offset,
      QStringLiteral("structure %1: coordinate %2")
          .arg(QString::fromLatin1(structures_[static_cast<std::size_t>(current_)].name), scale_.refusal(value)));
}

void GdsIndex::reportMissing() {
  for (const GdsStructure &structure : structures_) {
    for (const int placed : structure.placed) {
      const GdsStructure &target = structures_[static_cast<std::size_t>(placed)];
      if (!target.isDefined()) {
        report_.notice(
            QStringLiteral("structure %1 is placed but not in the file; the references are written all the same")
                .arg(QString::fromLatin1(target.name)),
            GdsPlace{structure.name, structure.offset}.toString());
      }
    }
  }
}

void GdsIndex::reportRecursion() {
  enum State : char { kNew, kOpen, kDone };
  std::vector<State> states(structures_.size(), kNew);
  // A walk with its own stack, since a chain of structures may be as long as the file.
  std::vector<std::pair<std::size_t, std::size_t>> path; // structure, and how many of its placed ones are done
  for (std::size_t root = 0; root < structures_.size(); ++root) {
    if (states[root] != kNew)
      continue;
    path.emplace_back(root, 0);
    states[root] = kOpen;
    while (!path.empty()) {
      auto &[number, done] = path.back();
      const GdsStructure &structure = structures_[number];
      if (done == structure.placed.size()) {
        states[number] = kDone;
        path.pop_back();
        continue;
      }
      const auto placed = static_cast<std::size_t>(structure.placed[done++]);
      if (states[placed] == kOpen) {
        report_.notice(QStringLiteral("structure %1 places itself, directly or through others; it is written as it is")
                           .arg(QString::fromLatin1(structures_[placed].name)),
                       GdsPlace{structure.name, structure.offset}.toString());
      } else if (states[placed] == kNew) {
        states[placed] = kOpen;
        path.emplace_back(placed, 0);
      }
    }
  }
}
