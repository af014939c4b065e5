import QtQuick
import Fleetor

// Announces the latest record's status when the vehicle sets off or stops, the record gets old, or nothing new is reported.
Voice {
    required property ViewControllerItem screen
    readonly property string motion: text("motionLabel")
    readonly property string age: text("ageLabel")
    readonly property string noReport: text("noReportLabel")
    readonly property ImageViewItem mark: screen.outlet("ageImageView") as ImageViewItem

    function text(name) {
        return (screen.outlet(name) as LabelItem)?.text ?? "";
    }

    words: [motion, text("motionSinceLabel"), age && `${mark?.accessibleName}: ${age}`, noReport].filter(Boolean).join(", ")
    topic: age === "" ? "" : `${motion} ${mark?.source} ${noReport !== ""}`
}
