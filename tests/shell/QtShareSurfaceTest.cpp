#include "shell/QtShareSurface.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

#include <gtest/gtest.h>

namespace nimbrel::shell {
namespace {

// What a file manager's paste reads back from the clipboard.
TEST(QtShareSurfaceTest, CopiedFilesReadBackAsAUriListAndAsGnomeCopiedFiles) {
  QtShareSurface surface;
  surface.putOnClipboard({"file:///home/me/My%20Photo.jpg", "file:///tmp/b.mp4"}, "/home/me/My Photo.jpg\n/tmp/b.mp4");

  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(data->data(QStringLiteral("text/uri-list")).trimmed(),
            QByteArray("file:///home/me/My%20Photo.jpg\r\nfile:///tmp/b.mp4"));
  EXPECT_EQ(data->data(QStringLiteral("x-special/gnome-copied-files")),
            QByteArray("copy\nfile:///home/me/My%20Photo.jpg\nfile:///tmp/b.mp4"));
  ASSERT_EQ(data->urls().size(), 2);
  EXPECT_EQ(data->urls().front().toLocalFile(), QStringLiteral("/home/me/My Photo.jpg"));
  EXPECT_EQ(data->text(), QStringLiteral("/home/me/My Photo.jpg\n/tmp/b.mp4"));
}

}  // namespace
}  // namespace nimbrel::shell
