#include "testdatabase.h"

#include <gtest/gtest.h>
#include <list>
#include <random>

using namespace storetest;

namespace {

// What the database should hold, in standard containers.
struct Model {
  struct Outline {
    std::string name;
    std::vector<oaPoint> points;
    int follows; // identity, -1 for none
    int identity;
  };
  std::list<Outline> outlines;
  int nextIdentity = 0;

  std::string dump() const {
    std::ostringstream out;
    for (const Outline &outline : outlines) {
      out << outline.name << " kind 18:";
      for (const oaPoint &point : outline.points) {
        out << " " << point.x() << "," << point.y();
      }
      for (const Outline &other : outlines) {
        if (other.identity == outline.follows) {
          out << " follows " << other.name;
        }
      }
      out << "\n";
    }
    return out.str();
  }
};

class RandomEditing {
public:
  explicit RandomEditing(unsigned seed) : random_(seed), database_(new TestDatabase) {}

  void edit() {
    switch (random_() % 4) {
    case 0:
    case 1:
      add();
      break;
    case 2:
      destroy();
      break;
    default:
      setPoints();
      break;
    }
  }
  // Saves and opens again; rows get the numbers they have in the file.
  void reopen(const std::string &path) {
    database_->writeTo(path);
    ASSERT_EQ(database_->dump(), model_.dump());
    database_.reset(new TestDatabase);
    database_->load(path);
    ASSERT_EQ(database_->dump(), model_.dump());
    rows_.clear();
    Row row = kNoRow;
    for (const Model::Outline &outline : model_.outlines) {
      row = database_->outlines.nextAlive(row);
      rows_[outline.identity] = row;
    }
  }

private:
  std::vector<oaPoint> randomPoints() {
    std::vector<oaPoint> points(random_() % 6);
    for (oaPoint &point : points) {
      point.set(static_cast<oaCoord>(random_()), static_cast<oaCoord>(random_()));
    }
    return points;
  }
  Model::Outline *randomOutline() {
    if (model_.outlines.empty()) {
      return nullptr;
    }
    return &*std::next(model_.outlines.begin(), static_cast<int>(random_() % model_.outlines.size()));
  }
  void add() {
    const Model::Outline *followed = random_() % 2 == 0 ? randomOutline() : nullptr;
    const int identity = model_.nextIdentity++;
    model_.outlines.push_back(
        {"outline" + std::to_string(identity), randomPoints(), followed ? followed->identity : -1, identity});
    const Model::Outline &outline = model_.outlines.back();
    rows_[identity] = database_->add(outline.name, outline.points, followed ? rows_[outline.follows] : kNoRow);
  }
  void destroy() {
    const Model::Outline *going = randomOutline();
    if (going == nullptr) {
      return;
    }
    const int identity = going->identity;
    for (Model::Outline &other : model_.outlines) {
      if (other.follows == identity) {
        other.follows = -1;
        database_->outlines.follows.set(rows_[other.identity], kNoRow);
      }
    }
    database_->destroyRow(database_->outlines, rows_[identity]);
    model_.outlines.remove_if([&](const Model::Outline &outline) { return outline.identity == identity; });
  }
  void setPoints() {
    if (Model::Outline *outline = randomOutline()) {
      outline->points = randomPoints();
      database_->setPoints(rows_[outline->identity], outline->points);
    }
  }

  std::mt19937 random_;
  Model model_;
  std::unique_ptr<TestDatabase> database_;
  std::unordered_map<int, Row> rows_;
};

} // namespace

TEST(StoreModel, RandomEditingMatchesStandardContainersAfterEachReopen) {
  const TemporaryDirectory directory;
  for (const unsigned seed : {1u, 20261121u, 77u}) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomEditing editing(seed);
    for (int session = 0; session < 12; ++session) {
      for (int step = 0; step < 40; ++step) {
        editing.edit();
      }
      editing.reopen(directory.file("db.oa"));
      ASSERT_FALSE(testing::Test::HasFatalFailure());
    }
  }
}
