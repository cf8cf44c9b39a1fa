#include <gtest/gtest.h>

#include "base/WebAddress.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

TEST(WebAddress, IsWhatPeopleMeanByOne) {
  const struct {
    const char16_t* text;
    const char* address;  ///< Empty for none.
  } cases[] = {
      {u"example.com", "https://example.com"},
      {u"example.COM", "https://example.com"},
      {u"example.dev/a/b?c=d#e", "https://example.dev/a/b?c=d#e"},
      {u"example.co", "https://example.co"},
      {u"foo.js", "https://foo.js"},
      {u"www.bücher.de", "https://www.xn--bcher-kva.de"},
      {u"https://a.b/x%20y", "https://a.b/x%20y"},
      {u"http://localhost:8080/x", "http://localhost:8080/x"},
      {u"https://nowhere", "https://nowhere"},
      {u"foo.txt", ""},
      {u"example.invalid", ""},
      {u"example", ""},
      {u"example.c1", ""},
      {u"example.com:8080", ""},
      {u"a..com", ""},
      {u".com", ""},
      {u"example.com.", ""},
      {u"a.b com", ""},
      {u"https://a b", ""},
      {u"https://", ""},
      {u"https:///path", ""},
      {u"https://a^b.com", ""},
      {u"HTTPS://a.com", ""},
      {u"ftp://a.com", ""},
      {u"/foo.com", ""},
      {u"//example.com", ""},
      {u"/", ""},
      {u"", ""},
      {u"1.5", ""},
  };
  for (const auto& each : cases) {
    const auto url = WebAddress::of(QString::fromUtf16(each.text));
    EXPECT_EQ(url ? url->toString(QUrl::FullyEncoded).toStdString() : "", each.address)
        << QString::fromUtf16(each.text).toStdString();
  }
  EXPECT_EQ(WebAddress::topLevelDomains().size(), 35);
}

}  // namespace
}  // namespace tarnwick
