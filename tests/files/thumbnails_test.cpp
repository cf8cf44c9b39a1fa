#include <unistd.h>

#include <QImage>

#include "files/Thumbnails.h"
#include "support/FileTest.h"
#include "support/Wait.h"

namespace tarnwick {
namespace {

using namespace Qt::StringLiterals;

class ThumbnailsTest : public FolderTest {
 protected:
  static QImage filled(const QSize& size, const QColor& color) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
  }
  void keep(const QString& size, const QString& path, const QString& modified, const QColor& color) const {
    const QString folder = at(u"cache/thumbnails/"_s + size);
    QDir().mkpath(folder);
    QImage image = filled({128, 64}, color);
    image.setText(u"Thumb::MTime"_s, modified);
    ASSERT_TRUE(image.save(folder + u'/' + Thumbnails::cacheName(path)));
  }
  QImage read(const QString& path, qint64 modified, int pixels = 100) const {
    return Thumbnails::read(at(u"cache"_s), path, QDateTime::fromSecsSinceEpoch(modified), pixels);
  }
};

TEST_F(ThumbnailsTest, HaveTheNamesThatTheDesktopGivesThem) {
  EXPECT_EQ(Thumbnails::cacheName(u"/home/jens/photos/me.png"_s), u"c6ee772d9e49320e97ec29a7eb5b1697.png"_s);
  EXPECT_NE(Thumbnails::cacheName(u"/a b"_s), Thumbnails::cacheName(u"/a%20b"_s));
}

TEST_F(ThumbnailsTest, ComeFromTheCacheWhileTheFileIsTheSame) {
  keep(u"normal"_s, u"/x.pdf"_s, u"1000"_s, Qt::red);
  keep(u"large"_s, u"/x.pdf"_s, u"900"_s, Qt::green);
  EXPECT_EQ(read(u"/x.pdf"_s, 1000).size(), QSize(100, 50));
  EXPECT_EQ(read(u"/x.pdf"_s, 1000, 200).pixelColor(0, 0), QColor(Qt::red)) << "the larger one is of an older state";
  EXPECT_EQ(read(u"/x.pdf"_s, 900, 200).pixelColor(0, 0), QColor(Qt::green));
  EXPECT_TRUE(read(u"/x.pdf"_s, 1001).isNull());
  put(u"cache/thumbnails/normal/"_s + Thumbnails::cacheName(u"/y.pdf"_s), "no picture");
  EXPECT_TRUE(read(u"/y.pdf"_s, 1000).isNull());
}

TEST_F(ThumbnailsTest, OfPicturesAreMadeWhereNobodyDid) {
  ASSERT_TRUE(filled({400, 100}, Qt::blue).save(at(u"wide.png"_s)));
  EXPECT_EQ(read(at(u"wide.png"_s), 5).size(), QSize(100, 25));
  put(u"fake.png"_s, "text");
  ASSERT_EQ(::mkfifo(encoded(u"pipe.png"_s).constData(), 0600), 0);
  for (const QString& name : {u"fake.png"_s, u"pipe.png"_s, u"gone.png"_s}) EXPECT_TRUE(read(at(name), 5).isNull());

  Thumbnails thumbnails(at(u"cache"_s));
  bool ready = false;
  QObject::connect(&thumbnails, &Thumbnails::ready, [&] { ready = true; });
  const QDateTime modified = QDateTime::fromSecsSinceEpoch(5);
  EXPECT_TRUE(thumbnails.of(at(u"wide.png"_s), modified, 100).isNull());
  ASSERT_TRUE(waitFor([&] { return ready; }));
  EXPECT_FALSE(thumbnails.of(at(u"wide.png"_s), modified, 100).isNull());
}

#if !defined(__SANITIZE_ADDRESS__)
/// What the process holds in memory, in bytes.
qint64 resident() {
  QFile file(u"/proc/self/statm"_s);
  return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').value(1).toLongLong() * ::getpagesize() : 0;
}

TEST_F(ThumbnailsTest, OfLargePicturesLeaveNothingBehindButTheirPixels) {
  constexpr int kPictures = 4;
  for (int i = 0; i < kPictures; ++i) {
    const QColor color = QColor::fromHsv(i * 60, 200, 200);
    ASSERT_TRUE(filled({2900, 2000}, color).save(at(u"%1.png"_s.arg(i))));
  }
  Thumbnails thumbnails(at(u"cache"_s));
  const QDateTime modified = QDateTime::fromSecsSinceEpoch(5);
  // The first one loads what decoding needs.
  EXPECT_TRUE(waitFor([&] { return !thumbnails.of(at(u"0.png"_s), modified, 160).isNull(); }));
  const qint64 before = resident();
  for (int i = 1; i < kPictures; ++i)
    EXPECT_TRUE(waitFor([&] { return !thumbnails.of(at(u"%1.png"_s.arg(i)), modified, 160).isNull(); }));
  EXPECT_LT(resident() - before, 4 * 1024 * 1024) << "each takes 22 MB while it is read";
}
#endif

}  // namespace
}  // namespace tarnwick
