#include "shell/QtShareSurface.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <gtest/gtest.h>

namespace nimbrel::shell {
namespace {

// What a file manager's paste reads back from the clipboard.
TEST(QtShareSurfaceTest, CopiedFilesReadBackAsAUriListAndAsGnomeCopiedFiles) {
  QtShareSurface().putOnClipboard({"file:///home/me/My%20Photo.jpg", "file:///tmp/b.mp4"}, "two files");
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(data->data(QStringLiteral("text/uri-list")), "file:///home/me/My%20Photo.jpg\r\nfile:///tmp/b.mp4\r\n");
  EXPECT_EQ(data->data(QStringLiteral("x-special/gnome-copied-files")),
            "copy\nfile:///home/me/My%20Photo.jpg\nfile:///tmp/b.mp4");
  EXPECT_EQ(data->text(), QStringLiteral("two files"));
}

}  // namespace
}  // namespace nimbrel::shell
