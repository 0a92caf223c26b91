import QtQuick
import Nimbrel.Shell

// The panel for several items: how many, and their total size.
InfoPanel {
    lines: ["lblContain", "lblSize"]
}
