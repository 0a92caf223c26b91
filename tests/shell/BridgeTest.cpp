#include <QSignalSpy>

#include <gtest/gtest.h>

#include "platform/uikit/NSLayoutConstraint.h"
#include "platform/uikit/UIButton.h"
#include "platform/uikit/ImageDecoder.h"
#include "platform/uikit/UIImageView.h"
#include "platform/uikit/UILabel.h"
#include "platform/uikit/UISlider.h"
#include "platform/uikit/UIViewController.h"
#include "shell/ImageStore.h"
#include "shell/QtRunLoop.h"
#include "shell/Snapshot.h"
#include "shell/ViewObject.h"

namespace nimbrel::shell {
namespace {

class BridgeTest : public ::testing::Test {
 protected:
  QtRunLoop loop_{0.0};
  RunLoop* previous_ = RunLoop::install(&loop_);
  ~BridgeTest() override { RunLoop::install(previous_); }
};

TEST_F(BridgeTest, AChangeIsToldOnceAndNoChangeNotAtAllConstraintsToo) {
  auto label = std::make_shared<UILabel>();
  ViewObject view(label);
  QSignalSpy spy(&view, &ViewObject::changed);
  label->setText(std::string("a"));
  EXPECT_EQ(spy.count(), 1);
  EXPECT_EQ(view.text(), "a");
  label->setText(std::string("a"));  // the platform tells, nothing a person sees differs
  EXPECT_EQ(spy.count(), 1);
  label->setTextColor(UIColor::rgba(1, 0, 0));
  label->setHidden(true);
  EXPECT_EQ(spy.count(), 3);
  EXPECT_EQ(view.textColor().name(), "#ff0000");
  EXPECT_TRUE(view.hidden());

  auto constraint = std::make_shared<NSLayoutConstraint>();
  constraint->setConstant(120);
  ViewObject constant(constraint);
  QSignalSpy constantSpy(&constant, &ViewObject::changed);
  constraint->setConstant(50);
  EXPECT_EQ(constantSpy.count(), 1);
  EXPECT_DOUBLE_EQ(constant.constant(), 50);
}

TEST_F(BridgeTest, APressSendsTheWiredActionsUnlessDisabledHiddenOrMissing) {
  auto controller = std::make_shared<UIViewController>();
  int presses = 0;
  controller->registerAction("onImagesBtn:", [&](const std::shared_ptr<NSObject>&) { ++presses; });
  auto button = std::make_shared<UIButton>();
  button->addTarget(controller, "onImagesBtn:", UIControlEvents::touchUpInside);
  ViewObject view(button);
  EXPECT_TRUE(view.press());
  EXPECT_EQ(presses, 1);
  button->setEnabled(false);
  EXPECT_FALSE(view.press());
  button->setEnabled(true);
  button->setHidden(true);
  EXPECT_FALSE(view.press());
  EXPECT_EQ(presses, 1);
  ViewObject missing(nullptr);  // an outlet the scene never filled
  EXPECT_FALSE(missing.valid());
  EXPECT_TRUE(missing.hidden());
  EXPECT_FALSE(missing.press());
}

TEST_F(BridgeTest, PicturesBecomeAddressesTheProviderAnswers) {
  auto& store = ImageStore::shared();
  EXPECT_EQ(store.urlFor(UIImage::named("icon_pdf")), "image://nimbrel/asset/icon_pdf");
  EXPECT_EQ(store.urlFor(std::nullopt), "");
  QString file = store.urlFor(UIImage::withPixels({400, 300, {}, "/nowhere/IMG_1.JPG"}));
  EXPECT_TRUE(file.startsWith("image://nimbrel/file/400x300/")) << file.toStdString();
  // Not a real picture: a tile of the same shape.
  QImage tile = store.render(file.mid(QString("image://nimbrel/").size()), QSize(200, 0));
  ASSERT_FALSE(tile.isNull());
  EXPECT_EQ(tile.width(), 200);
  EXPECT_EQ(tile.height(), 150);
  // Pixels in memory come back as they are.
  UIImage::Pixels red{2, 1, {255, 0, 0, 255, 255, 0, 0, 255}, ""};
  QString raw = store.urlFor(UIImage::withPixels(red));
  QImage image = store.render(raw.mid(QString("image://nimbrel/").size()), QSize());
  ASSERT_FALSE(image.isNull());
  EXPECT_EQ(image.pixelColor(0, 0), QColor(255, 0, 0));
  // A blurred copy keeps its source's name but is drawn from its own pixels.
  red.source = "/music/song.mp3#artwork#blur";
  EXPECT_EQ(store.picture(UIImage::withPixels(red), QSize()).pixelColor(1, 0), QColor(255, 0, 0));

  // The same pixels keep their address; old ones are forgotten but still give a picture of their shape.
  UIImage first = UIImage::withPixels({3, 3, std::vector<std::uint8_t>(36, 7), ""});
  QString a = store.urlFor(first);
  EXPECT_EQ(store.urlFor(first), a);
  for (size_t i = 0; i < ImageStore::kCapacity + 10; ++i) store.urlFor(UIImage::withPixels({1, 1, {0, 0, 0, 255}, ""}));
  EXPECT_LE(store.rememberedCount(), ImageStore::kCapacity);
  EXPECT_EQ(store.render(a.mid(QString("image://nimbrel/").size()), QSize(30, 0)).size(), QSize(30, 30));
}

// Stands for the platform's decoder: a green picture of the size asked for.
class GreenDecoder : public ImageDecoder {
 public:
  std::optional<std::vector<std::uint8_t>> decode(const UIImage::Pixels& p) const override {
    if (p.source != "/music/song.mp3#artwork") return std::nullopt;
    std::vector<std::uint8_t> rgba(static_cast<size_t>(p.width) * p.height * 4, 0);
    for (size_t i = 0; i < rgba.size(); i += 4) rgba[i + 1] = rgba[i + 3] = 255;
    return rgba;
  }
};

TEST_F(BridgeTest, ASongsCoverComesThroughThePlatformsDecoderAndCutsRound) {
  auto& store = ImageStore::shared();
  UIImage cover = UIImage::withPixels({40, 80, {}, "/music/song.mp3#artwork"});
  ImageDecoder::install(std::make_shared<GreenDecoder>());
  QImage decoded = store.picture(cover, QSize(20, 0));
  EXPECT_EQ(decoded.size(), QSize(20, 40));
  EXPECT_EQ(decoded.pixelColor(10, 20), QColor(0, 255, 0));
  QString url = store.urlFor(cover);
  QImage round = store.render("round/" + url.mid(QString("image://nimbrel/").size()), QSize(30, 30));
  EXPECT_EQ(round.size(), QSize(30, 30));
  EXPECT_EQ(round.pixelColor(15, 15), QColor(0, 255, 0));
  EXPECT_EQ(qAlpha(round.pixel(1, 1)), 0) << "outside the circle";
  ImageDecoder::install(nullptr);
  EXPECT_NE(store.picture(cover, QSize(20, 0)).pixelColor(10, 20), QColor(0, 255, 0)) << "no decoder: a tile";
}

TEST_F(BridgeTest, ASliderShowsItsBoundsAndAMoveSendsItsValue) {
  auto controller = std::make_shared<UIViewController>();
  auto slider = std::make_shared<UISlider>();
  slider->setMaximumValue(205);
  float sent = -1;
  controller->registerAction("sliderValueChange:", [&](const std::shared_ptr<NSObject>& sender) {
    sent = std::static_pointer_cast<UISlider>(sender)->value();
  });
  slider->addTarget(controller, "sliderValueChange:", UIControlEvents::valueChanged);
  ViewObject view(slider);
  EXPECT_DOUBLE_EQ(view.maximum(), 205);
  EXPECT_TRUE(view.slide(300));
  EXPECT_FLOAT_EQ(sent, 205) << "held within the bounds";
  EXPECT_DOUBLE_EQ(view.value(), 205);
  slider->setEnabled(false);
  EXPECT_FALSE(view.slide(10));
  EXPECT_FLOAT_EQ(sent, 205);
}

TEST_F(BridgeTest, EveryAssetTheBehaviourNamesHasADrawing) {
  const char* names[] = {"icon_folder", "icon_zip", "icon_pdf", "icon_document", "icon_ppt", "icon_xls",
                         "icon_images", "icon_videofile", "icon_music1", "file_other", "ic_music_placeholder",
                         "grid", "list", "ic_fav", "ic_unfav", "play", "pause", "ic_menu", "ic_back", "ic_close",
                         "ic_share", "ic_delete", "ic_info", "home_images", "home_videos", "home_audio",
                         "home_documents", "home_recent", "home_favourites", "home_storage", "ic_privacy",
                         "ic_terms", "ic_rate", "info", "success", "error", "backward15", "forward15"};
  for (const char* name : names) {
    EXPECT_TRUE(ImageStore::hasAsset(name)) << name;
    QImage image = ImageStore::renderAsset(name, QSize(48, 48));
    EXPECT_EQ(image.size(), QSize(48, 48)) << name;
    bool painted = false;
    for (int y = 0; y < image.height() && !painted; ++y)
      for (int x = 0; x < image.width() && !painted; ++x) painted = qAlpha(image.pixel(x, y)) > 0;
    EXPECT_TRUE(painted) << name << " draws nothing";
  }
}

}  // namespace
}  // namespace nimbrel::shell
