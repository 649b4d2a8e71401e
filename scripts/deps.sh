#!/usr/bin/env bash
# Installs the Debian packages the project needs, when any is missing.
set -euo pipefail
packages=(
  g++ cmake ninja-build ccache pkg-config
  qt6-base-dev qt6-base-dev-tools qt6-declarative-dev qt6-declarative-dev-tools
  qt6-image-formats-plugins qml6-module-qtquick qml6-module-qtquick-layouts
  qml6-module-qtquick-window qml6-module-qtqml qml6-module-qtqml-workerscript libgl-dev
  libsqlite3-dev sqlite3 zlib1g-dev fonts-noto-cjk xvfb xauth python3
)
missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing missing packages: ${missing[*]}"
  SUDO=""
  if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${missing[@]}"
fi
