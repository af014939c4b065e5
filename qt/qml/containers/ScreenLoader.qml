pragma ComponentBehavior: Bound
import QtQuick
import Fleetor

// Loads the QML file of a screen: by its identifier, or by its class when it is a container.
FocusScope {
    id: host

    property ViewControllerItem screen

    readonly property var files: ({
            LaunchVC: "ImageScreen.qml",
            EmptyVC: "ImageScreen.qml",
            TermsVC: "TermsScreen.qml",
            LoginVC: "LoginScreen.qml",
            VehiclesVC: "VehiclesScreen.qml",
            BoardVC: "BoardScreen.qml",
            FindVC: "FindScreen.qml",
            ChooseVehicleVC: "ChooseVehicleScreen.qml",
            VehicleVC: "VehicleScreen.qml",
            MenuVC: "MenuScreen.qml",
            AccountVC: "AccountScreen.qml",
            AboutVC: "AboutScreen.qml",
            InfoDetailVC: "InfoPage.qml",
            LiveDetailVC: "LivePage.qml",
            MapDetailVC: "DayMapPage.qml",
            RouteDetailVC: "TripsPage.qml",
            AboutDetailVC: "VehicleAboutPage.qml"
        })
    readonly property bool ready: screen?.loaded ?? false
    property ViewControllerItem drawn: null

    function fileOf(screen) {
        if (screen instanceof NavigationControllerItem)
            return "NavigationStack.qml";
        if (screen instanceof RevealControllerItem)
            return "RevealContainer.qml";
        if (screen instanceof SwipeTabBarControllerItem)
            return "PagerPages.qml";
        if (!(screen.identifier in files))
            console.warn(`ScreenLoader.qml: no file for the screen "${screen.identifier}"`);
        return files[screen.identifier] ?? "PlainScreen.qml";
    }

    // Called twice when both properties change; neither handler may rely on the other property.
    function load() {
        const next = screen?.loaded ? screen : null;
        if (next === drawn)
            return;
        drawn = next;
        if (next === null)
            loader.source = "";
        else
            loader.setSource(fileOf(next), {
                screen: next
            });
    }

    onReadyChanged: load()
    onScreenChanged: load()

    Loader {
        id: loader
        anchors.fill: parent
        focus: true
        onLoaded: item.focus = true // within this scope
    }
}
