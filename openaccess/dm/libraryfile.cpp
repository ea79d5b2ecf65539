#include "libraryfile.h"

#include "filelayer.h"
#include "oa/oaException.h"
#include "raise.h"

#include <algorithm>
#include <cctype>
#include <strings.h>

namespace OpenAccess_4 {
namespace kit {

namespace {

constexpr std::size_t kLimitBytes = 0x10000;

// Start tags one after the other, with their attributes. Whatever stands between tags is passed over.
class TagReader {
public:
  TagReader(const std::string &text, const std::string &path) : text_(text), path_(path) {}

  // False at the end of the text.
  bool next();
  const std::string &element() const { return element_; }
  const std::vector<std::pair<std::string, std::string>> &attributes() const { return attributes_; }
  [[noreturn]] void fail(const std::string &what) const {
    const auto line = 1 + std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(at_), '\n');
    raiseDM(oacLibDataFileSyntaxError, "file " + path_ + " line " + std::to_string(line) + ": " + what);
  }

private:
  bool isAt(const char *token) const { return text_.compare(at_, std::char_traits<char>::length(token), token) == 0; }
  void skipBlanks() {
    while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_])) != 0) {
      ++at_;
    }
  }
  void skipBehind(const char *token) {
    const std::size_t found = text_.find(token, at_);
    if (found == std::string::npos) {
      fail(std::string("expected \"") + token + "\", found the end of the file");
    }
    at_ = found + std::char_traits<char>::length(token);
  }
  std::string name();
  std::string value();
  static std::string decoded(const std::string &raw);

  const std::string &text_;
  const std::string &path_;
  std::size_t at_ = 0;
  std::string element_;
  std::vector<std::pair<std::string, std::string>> attributes_;
};

bool TagReader::next() {
  for (;;) {
    at_ = std::min(text_.find('<', at_), text_.size());
    if (at_ == text_.size()) {
      return false;
    }
    if (isAt("<!--")) {
      skipBehind("-->");
    } else if (isAt("<?") || isAt("<!") || isAt("</")) {
      skipBehind(">");
    } else {
      break;
    }
  }
  ++at_;
  element_ = name();
  attributes_.clear();
  for (;;) {
    skipBlanks();
    if (at_ == text_.size()) {
      fail("element " + element_ + " has no end");
    }
    if (text_[at_] == '>' || isAt("/>")) {
      return true;
    }
    std::string attribute = name();
    skipBlanks();
    if (at_ == text_.size() || text_[at_] != '=') {
      fail("attribute " + attribute + " of element " + element_ + " has no value");
    }
    ++at_;
    skipBlanks();
    attributes_.emplace_back(std::move(attribute), value());
  }
}

std::string TagReader::name() {
  const std::size_t begin = at_;
  while (at_ < text_.size() && (std::isalnum(static_cast<unsigned char>(text_[at_])) != 0 || text_[at_] == '_' ||
                                text_[at_] == '-' || text_[at_] == '.' || text_[at_] == ':')) {
    ++at_;
  }
  if (at_ == begin) {
    fail("expected a name");
  }
  return text_.substr(begin, at_ - begin);
}

std::string TagReader::value() {
  if (at_ == text_.size() || (text_[at_] != '"' && text_[at_] != '\'')) {
    fail("expected a value in quotes");
  }
  const std::size_t end = text_.find(text_[at_], at_ + 1);
  if (end == std::string::npos) {
    fail("a quote is not closed");
  }
  const std::string raw = text_.substr(at_ + 1, end - at_ - 1);
  at_ = end + 1;
  return decoded(raw);
}

constexpr std::pair<const char *, char> kEntities[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

std::string TagReader::decoded(const std::string &raw) {
  std::string text;
  for (std::size_t i = 0; i < raw.size();) {
    std::size_t length = 1;
    char c = raw[i];
    for (const auto &[entity, meaning] : kEntities) {
      if (raw.compare(i, std::char_traits<char>::length(entity), entity) == 0) {
        length = std::char_traits<char>::length(entity);
        c = meaning;
      }
    }
    text += c;
    i += length;
  }
  return text;
}

std::string encoded(const std::string &text) {
  std::string raw;
  for (const char c : text) {
    const auto *entity =
        std::find_if(std::begin(kEntities), std::end(kEntities), [c](const auto &e) { return e.second == c; });
    raw += entity != std::end(kEntities) ? std::string(entity->first) : std::string(1, c);
  }
  return raw;
}

} // namespace

bool LibraryFile::isReadOnly() const {
  const std::string *value = attribute("libReadOnly");
  return value != nullptr && ::strcasecmp(value->c_str(), "yes") == 0;
}

const std::string *LibraryFile::attribute(const std::string &name) const {
  const auto found =
      std::find_if(attributes.begin(), attributes.end(), [&](const auto &entry) { return entry.first == name; });
  return found == attributes.end() ? nullptr : &found->second;
}

void LibraryFile::setAttribute(const std::string &name, const std::string &value) {
  for (auto &entry : attributes) {
    if (entry.first == name) {
      entry.second = value;
      return;
    }
  }
  attributes.emplace_back(name, value);
}

LibraryFile LibraryFile::read(const std::string &path) {
  std::string text;
  try {
    text = readSmallFile(path, kLimitBytes);
  } catch (const oaException &error) {
    raiseDM(oacCannotOpenLibDataFile, std::string(error.getMsg()));
  }
  return parse(text, path);
}

LibraryFile LibraryFile::parse(const std::string &text, const std::string &path) {
  LibraryFile file;
  // An empty file marks a library, too; everything else about it is default then.
  if (std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isspace(c) != 0; })) {
    return file;
  }
  TagReader tags(text, path);
  if (!tags.next() || tags.element() != "Library") {
    tags.fail("expected an element Library");
  }
  for (const auto &[name, value] : tags.attributes()) {
    if (name == "DMSystem") {
      file.dmSystem = value;
    }
  }
  while (tags.next()) {
    if (tags.element() == file.dmSystem) {
      for (const auto &[name, value] : tags.attributes()) {
        file.setAttribute(name, value);
      }
      break;
    }
  }
  return file;
}

std::string LibraryFile::toText() const {
  std::string text = "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n\n<Library DMSystem=\"" + encoded(dmSystem) +
                     "\">\n    <" + dmSystem;
  for (const auto &[name, value] : attributes) {
    text += "\n        " + name + "=\"" + encoded(value) + "\"";
  }
  return text + "/>\n</Library>\n";
}

} // namespace kit
} // namespace OpenAccess_4
