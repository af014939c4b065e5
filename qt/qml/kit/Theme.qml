pragma Singleton
import QtQuick
import Fleetor

// Colours, sizes and direction of everything that is drawn. Sizes follow the system's font, the direction the language.
QtObject {
    id: theme

    property bool forceDark: false
    readonly property bool dark: forceDark || (UserPreferences.wantsDark ?? palette.window.hslLightness < 0.5)
    readonly property SystemPalette palette: SystemPalette {}

    // The colours of the bars are those that the program sets, on dark ground where the user wants more contrast. A fine dark
    // edge carries the white words elsewhere.
    readonly property bool contrast: UserPreferences.wantsContrast
    property AppearanceItem appearance: null
    readonly property color bar: contrast ? brand : appearance?.bar ?? "transparent"
    readonly property color barMark: contrast ? barTitle : brand // what has to stand out, as the focus does
    readonly property color barEdge: contrast ? "transparent" : "#603b4a59"
    readonly property string barGround: contrast ? "" : "bar" // for the outlines of pictures
    readonly property color barButton: appearance?.barButton ?? "transparent"
    readonly property color barTitle: appearance?.barTitle ?? "transparent"
    readonly property color tabTitle: appearance?.tabTitle ?? "transparent"
    readonly property color tabSelected: appearance?.selectedTabTitle ?? "transparent"
    readonly property color tabPlate: "#dde6eb"

    readonly property color brand: "#3b4a59"
    readonly property color menu: dark ? "#1a2228" : brand
    readonly property color menuText: "white"

    readonly property color background: dark ? "#12171b" : "#ffffff"
    readonly property color raised: dark ? "#1e262c" : "#ffffff"
    readonly property color well: dark ? "#0b0f12" : "#f1f5f7"
    readonly property color disc: dark ? "#26313a" : well // behind a picture
    readonly property color text: dark ? "#f2f5f7" : "#1b252d"
    readonly property color secondaryText: dark ? "#a9b7c0" : "#566571"
    readonly property color separator: dark ? "#2d373f" : "#dde4e8"
    readonly property color pressed: dark ? "#2a343c" : "#e6edf1"
    readonly property color accent: dark ? "#8fb4c6" : "#2f6377"
    readonly property color accentPressed: Qt.darker(accent, 1.25)
    readonly property color accentText: dark ? "#10181d" : "#ffffff"
    readonly property color field: dark ? "#1e262c" : "#ffffff"
    readonly property color fieldBorder: dark ? "#6a7c88" : "#7d909c"
    readonly property color alert: dark ? "#f2a39b" : "#b3261e"
    readonly property color focusRing: dark ? "#cfe6f2" : "#1d5c78"
    readonly property color driving: dark ? "#7fc4a4" : "#2f6b53"
    readonly property color parking: dark ? "#86bdea" : "#25639c"
    readonly property color parkingPlate: dark ? "#16202a" : "#f3f8fd"
    readonly property color dim: "#80000000"
    readonly property color shadow: "#30000000"
    readonly property color toast: dark ? "#f0e4eaee" : "#f01f2a32"
    readonly property color toastText: dark ? "#12171b" : "#ffffff"
    readonly property color mapGround: dark ? "#1d262c" : "#eef1ee"
    readonly property color mapGrid: dark ? "#2a353c" : "#dde2df"
    readonly property color mapLabel: dark ? "#d012171b" : "#d0ffffff"
    readonly property color mapShade: dark ? "#5a6b76" : "#40000000" // around what lies on the map

    readonly property real scale: UserPreferences.textScale
    readonly property bool large: scale > 1 // texts with one line at the normal size may take more
    readonly property int titleSize: Math.round(20 * scale)
    readonly property int bodySize: Math.round(16 * scale)
    readonly property int smallSize: Math.round(13 * scale)
    readonly property int tabSize: Math.round(12 * scale)
    readonly property int touch: 48
    property bool sideways: false // the window is wide and low, as that of a phone held so
    readonly property int barHeight: Math.round((sideways ? 44 : 56) * Math.min(scale, 1.25))
    readonly property int tabHeight: Math.round(Math.max(sideways ? 44 : 56, (sideways ? 8 : 34) + tabSize * 1.6))
    readonly property int margin: 16

    readonly property bool mirrored: Application.layoutDirection === Qt.RightToLeft
    readonly property int forward: mirrored ? -1 : 1 // 1 or -1: the direction of x in which text is read

    // Duration of an animation, in milliseconds: 0 for users who have turned animations off.
    function motion(milliseconds) {
        return UserPreferences.wantsMotion ? milliseconds : 0;
    }

    // Whether the picture is mirrored in right-to-left layouts: it points in reading direction.
    function turns(picture) {
        return mirrored && /NavBack|BtnLogout/.test(picture);
    }
}
