#include "librarytext.h"

#include "filelayer.h"
#include "libraryfile.h"
#include "oa/oaException.h"

#include <algorithm>
#include <cctype>
#include <strings.h>
#include <vector>

namespace OpenAccess_4 {
namespace kit {
namespace check {

namespace {

// The elements of a text that LibraryFile has read, so its tags are whole but for end tags.
class ElementCheck {
public:
  ElementCheck(const std::string &text, const std::string &dmSystem, FileReport &report)
      : text_(text), dmSystem_(dmSystem), report_(report) {}

  void run() {
    std::size_t at = 0;
    while ((at = text_.find('<', at)) != std::string::npos) {
      if (text_.compare(at, 4, "<!--") == 0) {
        at = std::min(text_.find("-->", at), text_.size());
      } else {
        const std::size_t end = endOfTag(at);
        takeTag(text_.substr(at + 1, end - at - 1));
        at = end;
      }
    }
    for (const std::string &element : open_) {
      report_.damage({"element " + quoted(element) + " is not closed", "</" + element + ">"});
    }
  }

private:
  // Of its '>', or of the text; a value in quotes may hold one, too.
  std::size_t endOfTag(std::size_t at) const {
    char quote = 0;
    for (; at < text_.size() && (quote != 0 || text_[at] != '>'); ++at) {
      const char c = text_[at];
      if (quote != 0) {
        quote = c == quote ? 0 : quote;
      } else if (c == '"' || c == '\'') {
        quote = c;
      }
    }
    return at;
  }

  void takeTag(const std::string &tag) {
    if (tag.empty() || tag[0] == '?' || tag[0] == '!') {
      return;
    }
    const std::size_t begin = tag[0] == '/' ? 1 : 0;
    const std::string element = tag.substr(begin, tag.find_first_of(" \t\r\n/", begin) - begin);
    if (begin == 1) {
      closeElement(element);
      return;
    }
    const bool isKnown = open_.empty() ? element == "Library" : open_.size() == 1 && element == dmSystem_;
    if (!isKnown) {
      report_.damage({"has an element " + quoted(element), "one element " + dmSystem_ + " in one element Library"});
    }
    if (tag.back() != '/') {
      open_.push_back(element);
    }
  }

  void closeElement(const std::string &element) {
    if (open_.empty() || open_.back() != element) {
      report_.damage({"has an end of an element " + quoted(element) + ", which is not open there", {}});
    } else {
      open_.pop_back();
    }
  }

  const std::string &text_;
  const std::string &dmSystem_;
  FileReport &report_;
  std::vector<std::string> open_;
};

void checkAttributes(const LibraryFile &file, FileReport &report) {
  for (const auto &[name, value] : file.attributes) {
    if (name == "libReadOnly") {
      if (::strcasecmp(value.c_str(), "yes") != 0 && ::strcasecmp(value.c_str(), "no") != 0) {
        report.damage({"attribute libReadOnly is " + quoted(value), "Yes or No"});
      }
    } else if (name != "origFileSystem") {
      // Programs may have their own.
      report.warning("has an attribute " + quoted(name) + ", which the kit makes no use of");
    }
  }
}

} // namespace

void checkLibraryText(const std::string &path, FileReport &report) {
  constexpr std::size_t kLimitBytes = 0x10000;
  try {
    const std::string text = readSmallFile(path, kLimitBytes);
    const LibraryFile file = LibraryFile::parse(text, path);
    if (file.dmSystem == "oaDMTurbo") {
      report.foreign("is of the data management system oaDMTurbo, a server, which this kit cannot open");
      return;
    }
    if (file.dmSystem != "oaDMFileSys" && file.dmSystem != "oaDMSystem") {
      report.damage({"DMSystem is " + quoted(file.dmSystem), "oaDMFileSys; the library cannot be opened"});
    }
    ElementCheck(text, file.dmSystem, report).run();
    checkAttributes(file, report);
  } catch (const oaException &exception) {
    report.damage({std::string(exception.getMsg()), {}});
  }
}

} // namespace check
} // namespace kit
} // namespace OpenAccess_4
