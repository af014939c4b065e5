"""packages.py FOLDER: every Debian package of scripts/packages has a use that is found in the project, and every use that is
listed here belongs to a package. A new package comes with its pattern, or with the reason why no file names it."""

import re
import subprocess
import sys
from pathlib import Path

ROOT = Path(sys.argv[1])
BUILD, SCRIPT = (r"(CMakeLists\.txt|\.cmake)$", r"^(run|test|check|bench|package|scripts/[\w.]+|\.githooks/[\w-]+)$")
USES = {  # package: (files, pattern in them)
    "cmake": (SCRIPT, r"\bcmake --"), "ninja-build": (SCRIPT, r"-G Ninja"), "ccache": (BUILD, "ccache"),
    "mold": (BUILD, "mold"), "pkg-config": (BUILD, "find_package.PkgConfig"),
    "g++": (BUILD, "CXX_STANDARD|-std=|cxx_std"), "qt6-base-dev": (BUILD, "Qt6::Gui"),
    "qt6-declarative-dev": (BUILD, "Qt6::Quick"), "qt6-shadertools-dev": (BUILD, "ShaderTools"),
    "qt6-shader-baker": (BUILD, "qt_add_shaders|qt6_add_shaders"), "libsecret-1-dev": (BUILD, "libsecret-1"), "libqrencode-dev": (BUILD, "libqrencode"),
    "libcurl4-openssl-dev": (BUILD, "CURL"), "libsimdjson-dev": (BUILD, "simdjson"),
    "libsqlite3-dev": (BUILD, "SQLite3"), "libsodium-dev": (BUILD, "libsodium"),
    "libcpp-httplib-dev": (BUILD, "cpp-httplib"), "nlohmann-json3-dev": (BUILD, "nlohmann_json"),
    "libcairo2-dev": (BUILD, "cairo"), "libpng-dev": (BUILD, "libpng"), "zlib1g-dev": (BUILD, "ZLIB"),
    "libicu-dev": (BUILD, r"find_package\(ICU"),
    "qml6-module-qtquick": (r"\.qml$", "^import QtQuick$"),
    "qml6-module-qtquick-window": (r"\.qml$", "^import QtQuick.Window"), "libqt6svg6": ("resources.qrc$", r"\.svg"),
    "fonts-open-sans": (r"\.(cpp|py)$", "Open Sans"), "xdg-utils": (r"^app/", "QDesktopServices::openUrl"),
    "desktop-file-utils": (SCRIPT, "desktop-file-"), "xvfb": (SCRIPT, "xvfb-run|Xvfb"),
    "dbus": (SCRIPT, "dbus-run-session|dbus-daemon"), "gnome-keyring": (SCRIPT, "gnome-keyring-daemon"),
    "xdotool": (SCRIPT, "xdotool"), "imagemagick": (SCRIPT, r"\bimport\b.*-window|\"(import|convert|magick)\""),
    "python3": (r"\.py$", "^import "), "python3-gi": (r"\.py$", "^import gi$"),
    "gir1.2-atspi-2.0": (r"\.py$", "import Atspi"), "libssl-dev": (BUILD, "OpenSSL"),
    "openssl": (r"\.cpp$", "openssl "), "libgtest-dev": (BUILD, "GTest"), "libgmock-dev": (BUILD, "gmock"),
    "weston": (SCRIPT, "weston"), "faketime": (SCRIPT, "faketime"), "clang": (r"CMakePresets.json", r"clang\+\+"),
    "clang-format": (SCRIPT, "clang-format"), "clang-tidy": (SCRIPT, "clang-tidy"),
    "qt6-declarative-dev-tools": (SCRIPT + "|" + BUILD, "qmllint"), "appstream": (SCRIPT, "appstreamcli"),
    "shellcheck": (SCRIPT, "shellcheck"), "lintian": (SCRIPT, "lintian"), "python3-pyflakes": (SCRIPT, "pyflakes"),
    "gpsbabel": (SCRIPT, '"gpsbabel"'), "libxml2-utils": (SCRIPT, '"xmllint"'), "poppler-utils": (SCRIPT, '"pdftotext"'),
    "zbar-tools": (SCRIPT, '"zbarimg"'), "help2man": (BUILD, "HELP2MAN"), "rapidjson-dev": (r"\.cpp$", "rapidjson/"),
    "libboost-json1.81-dev": (r"\.cpp$", "boost/json"), "mmdebstrap": (SCRIPT, "mmdebstrap"),
    "slirp4netns": (SCRIPT, "slirp4netns"), "qtdeclarative5-dev": (BUILD, "Qt5 .*Quick"),
    "qtpositioning5-dev": (BUILD, "Qt5 .*Positioning"), "qtlocation5-dev": (BUILD, "Qt5 .*Location"),
    "qml-module-qtlocation": ("benchmarks/", "import QtLocation"),
    "qml-module-qtpositioning": ("benchmarks/", "import QtPositioning"),
    "qml-module-qtquick2": ("benchmarks/", "import QtQuick 2"), "libshumate-dev": (BUILD, "shumate"),
    "libgtk-4-dev": (r"\.cpp$", "gtk/gtk.h|gtk_"),
}
NEEDED_BY = {  # package: what needs it without naming it
    "libgl-dev": "Qt6::Gui, to configure", "libgl1-mesa-dri": "a window without a GPU", "xauth": "xvfb-run",
    "qml6-module-qtqml": "QtQuick", "qml6-module-qtqml-models": "QtQuick", "qml6-module-qtqml-workerscript": "QtQuick",
    "fonts-dejavu-core": "texts in letters that Open Sans lacks", "ca-certificates": "https",
    "at-spi2-core": "Atspi, for its bus", "debian-archive-keyring": "mmdebstrap",
    "libclang-rt-14-dev": "clang's sanitizers", "qt6-wayland": "the client under weston",
    "dpkg-dev": "CPack, for the dependencies", "file": "CPack, for the dependencies",
}

lines = (ROOT / "scripts/packages").read_text().splitlines()
listed = {name for line in lines if not line.startswith("#") for name in line.split(":", 1)[1].split()}
tracked = subprocess.run(["git", "-C", ROOT, "ls-files"], check=True, capture_output=True, text=True).stdout.split("\n")
texts = {name: (ROOT / name).read_text(errors="replace") for name in tracked
         if name and name not in ("scripts/packages", "tests/house/packages.py") and (ROOT / name).is_file()}


def is_used(files, pattern):
    return any(re.search(files, name) and re.search(pattern, text, re.MULTILINE) for name, text in texts.items())


problems = [f"scripts/packages: no use of {name} is known; add it to tests/house/packages.py"
            for name in sorted(listed - USES.keys() - NEEDED_BY.keys())]
problems += [f"tests/house/packages.py: {name} is not in scripts/packages"
             for name in sorted((USES.keys() | NEEDED_BY.keys()) - listed)]
problems += [f"scripts/packages: nothing uses {name}: no file {use[0]} holds {use[1]}"
             for name, use in USES.items() if name in listed and not is_used(*use)]
print("\n".join(problems))
sys.exit(bool(problems))
