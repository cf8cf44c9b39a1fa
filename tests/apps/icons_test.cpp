#include <QIcon>
#include <QImage>

#include "apps/AppIcons.h"
#include "apps_fixture.h"

namespace tarnwick::test {
namespace {

class IconsTest : public AppsTest {
 protected:
  void SetUp() override {
    theme(u"first"_s, Qt::red);
    theme(u"second"_s, Qt::blue);
    QIcon::setThemeSearchPaths({root(u"icons"_s)});
    QIcon::setThemeName(u"first"_s);
  }

  void theme(const QString& name, QColor colour) {
    const QString path = root(u"icons/"_s) + name;
    write(path + "/index.theme"_L1,
          u"[Icon Theme]\nName=x\nComment=x\nDirectories=48\n\n[48]\nSize=48\nType=Fixed\n"_s);
    picture(path + "/48/tool.png"_L1, QSize(48, 48), colour);
  }
  void picture(const QString& path, QSize size, QColor colour) {
    QDir().mkpath(QFileInfo(path).path());
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    ASSERT_TRUE(image.save(path));
  }
  static QColor middle(const QPixmap& pixmap) {
    return pixmap.toImage().pixelColor(pixmap.width() / 2, pixmap.height() / 2);
  }
};

TEST_F(IconsTest, GivesASquareOfTheAskedSizeFromWhereverTheIconIs) {
  picture(root(u"wide.png"_s), QSize(400, 100), Qt::green);
  picture(root(u"system/pixmaps/old.png"_s), QSize(10, 10), Qt::yellow);
  write(
      root(u"vector.svg"_s),
      u"<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'><rect width='8' height='8' fill='#00ffff'/></svg>"_s);
  write(root(u"broken.png"_s), u"no picture"_s);
  AppIcons icons(environment);
  // An invalid colour: there is no icon.
  const std::pair<QString, QColor> cases[] = {{u"tool"_s, Qt::red},
                                              {u"tool.png"_s, Qt::red},
                                              {root(u"wide.png"_s), Qt::green},
                                              {u"old"_s, Qt::yellow},
                                              {root(u"vector.svg"_s), Qt::cyan},
                                              {root(u"broken.png"_s), {}},
                                              {root(u"none.png"_s), {}},
                                              {u"none"_s, {}},
                                              {{}, {}}};
  for (const auto& [name, colour] : cases) {
    const QPixmap pixmap = icons.pixmap(name, 40, 1.5);
    ASSERT_EQ(pixmap.isNull(), !colour.isValid()) << name.toStdString();
    if (pixmap.isNull()) continue;
    EXPECT_EQ(pixmap.deviceIndependentSize(), QSizeF(40, 40)) << name.toStdString();
    EXPECT_EQ(middle(pixmap), colour) << name.toStdString();
  }
  const QImage wide = icons.pixmap(root(u"wide.png"_s), 40, 1.5).toImage();
  EXPECT_EQ(wide.pixelColor(30, 5).alpha(), 0) << "the shape must not be stretched";
  EXPECT_TRUE(icons.pixmap(u"tool"_s, 0, 1).isNull());
  EXPECT_TRUE(icons.pixmap(u"tool"_s, 40, std::nan("")).isNull());
}

TEST_F(IconsTest, FollowsTheThemeAndRemembersUntilItChanges) {
  AppIcons icons(environment);
  EXPECT_EQ(middle(icons.pixmap(u"tool"_s, 32, 1)), QColor(Qt::red));
  QIcon::setThemeName(u"second"_s);
  EXPECT_EQ(middle(icons.pixmap(u"tool"_s, 32, 1)), QColor(Qt::blue));

  const QString path = root(u"later.png"_s);
  EXPECT_TRUE(icons.pixmap(path, 32, 1).isNull());
  picture(path, QSize(32, 32), Qt::green);
  EXPECT_TRUE(icons.pixmap(path, 32, 1).isNull());
  icons.clear();
  EXPECT_FALSE(icons.pixmap(path, 32, 1).isNull());
}

TEST_F(IconsTest, ChoosesAThemeOnlyWhereNoneIsSet) {
  const QStringList installed{u"hicolor"_s, u"Adwaita"_s, u"Papirus"_s, u"odd"_s};
  EXPECT_EQ(AppIcons::chooseTheme(u"mine"_s, u"odd"_s, installed), u"mine"_s);
  EXPECT_EQ(AppIcons::chooseTheme(u"hicolor"_s, u"odd"_s, installed), u"odd"_s);
  EXPECT_EQ(AppIcons::chooseTheme({}, u"gone"_s, installed), u"Papirus"_s);
  EXPECT_EQ(AppIcons::chooseTheme({}, {}, {u"odd"_s}), QString());

  QIcon::setThemeName(QString());
  write(root(u"config/gtk-3.0/settings.ini"_s), u"[Settings]\ngtk-icon-theme-name=second\n"_s);
  AppIcons icons(environment);
  EXPECT_EQ(QIcon::themeName(), QString()) << "before any picture is asked for";
  icons.pixmap(u"anything"_s, 16, 1);
  EXPECT_EQ(QIcon::themeName(), u"second"_s);
}

}  // namespace
}  // namespace tarnwick::test
