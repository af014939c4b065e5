import QtQml

// How fast the finger was that is lifted now. The speed of a handler's point stays when the finger rests.
QtObject {
    property real latest: 0 // points a second
    property double since: 0 // when that was, in milliseconds

    function follow(velocity) {
        latest = velocity.x;
        since = Date.now();
    }

    function atRelease() {
        return Date.now() - since < 100 ? latest : 0;
    }
}
