#!/usr/bin/env bash
# Installs the Debian packages the build needs, only those missing. Quiet when all is there.
set -euo pipefail
packages=(
  g++ cmake ninja-build pkg-config make ccache
  libgtest-dev libgmock-dev libbenchmark-dev
  liburiparser-dev libicu-dev nlohmann-json3-dev
  python3 clang-16 libclang-rt-16-dev
  qt6-base-dev qt6-declarative-dev qt6-svg-dev qt6-lottie-dev qt6-qpa-plugins libgl-dev
  qml6-module-qtqml qml6-module-qtquick qml6-module-qtquick-window qml6-module-qtquick-shapes
  qml6-module-qtqml-workerscript qml6-module-qt-labs-lottieqt fonts-inter fonts-dejavu-core
  qt6-multimedia-dev qml6-module-qtmultimedia qt6-pdf-dev
  libsqlite3-dev libexiv2-dev libtag1-dev libjpeg-dev libpng-dev libheif-dev libmd-dev
  libavformat-dev libavcodec-dev libavutil-dev libswscale-dev libswresample-dev
  exiv2 libvips-tools
  dbus-daemon dbus-bin
  dpkg-dev file desktop-file-utils appstream groff-base
  hyperfine
)
missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0
sudo=""
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null 2>&1; then
    echo "These Debian packages are missing: ${missing[*]}." >&2
    echo "Installing them needs root, and sudo is not installed: run \`su -c ./tools/install-deps.sh\` once (or install sudo), then try again." >&2
    exit 1
  fi
  sudo="sudo"
fi
echo "Installing: ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
