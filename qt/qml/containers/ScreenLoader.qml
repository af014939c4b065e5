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
            ChooseVehicleVC: "ChooseVehicleScreen.qml",
            VehicleVC: "VehicleScreen.qml",
            MenuVC: "MenuScreen.qml",
            AccountVC: "AccountScreen.qml",
            AboutVC: "AboutScreen.qml",
            InfoDetailVC: "TablePage.qml",
            LiveDetailVC: "MapPage.qml",
            MapDetailVC: "MapPage.qml",
            RouteDetailVC: "TripsPage.qml",
            AboutDetailVC: "TablePage.qml"
        })
    readonly property string plain: "PlainScreen.qml"
    readonly property string file: {
        if (!screen?.loaded)
            return "";
        if (screen instanceof NavigationControllerItem)
            return "NavigationStack.qml";
        if (screen instanceof RevealControllerItem)
            return "RevealContainer.qml";
        if (screen instanceof SwipeTabBarControllerItem)
            return "PagerPages.qml";
        return files[screen.identifier] ?? plain;
    }

    function load() {
        if (file === plain)
            console.warn(`ScreenLoader.qml: no file for the screen "${screen.identifier}"`);
        if (file === "")
            loader.source = "";
        else
            loader.setSource(file, {
                screen: screen
            });
    }

    onFileChanged: load()
    onScreenChanged: load()

    Loader {
        id: loader
        anchors.fill: parent
        focus: true
        onLoaded: item.focus = true // within this scope
    }
}
