// The buffers in which texts of the API become texts of the host, against the conversion that they spare.

#include "repeatedtexts.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

// Texts of all short lengths, plain and with a character beyond ASCII at each place.
std::vector<std::string> manyTexts() {
  std::vector<std::string> texts;
  for (std::size_t length = 0; length <= 20; ++length) {
    const std::string plain = std::string("M1 w=0.42 l=0.15 nf=4").substr(0, length);
    texts.push_back(plain);
    for (std::size_t place = 0; place <= length; ++place) {
      texts.push_back(plain.substr(0, place) + "\xc2\xb5" + plain.substr(place));
    }
  }
  return texts;
}

TEST(TextBuffer, GivesTheSameAsTheConversion) {
  TextBuffer buffer;
  for (const std::string &text : manyTexts()) {
    const oa::oaString given(text.c_str());
    EXPECT_EQ(buffer.set(given), oaConvert::toString(given)) << text;
  }
}

TEST(TextBuffer, LeavesWhatAReceiverKept) {
  TextBuffer buffer;
  const QString kept = buffer.set(oa::oaString("first"));
  EXPECT_EQ(buffer.set(oa::oaString("other")), QLatin1String("other"));
  EXPECT_EQ(kept, QLatin1String("first"));
}

TEST(RepeatedTexts, GiveTheSameAsTheConversionAtEveryPlace) {
  RepeatedTexts texts;
  const std::vector<std::string> all = manyTexts();
  for (int round = 0; round < 3; ++round) { // the second has the texts of the first
    for (int place = 0; place < 100; ++place) {
      const oa::oaString given(all[std::size_t(place + round / 2 * 7) % all.size()].c_str());
      EXPECT_EQ(texts.at(place, given), oaConvert::toString(given)) << round << ' ' << place;
    }
  }
}

} // namespace
