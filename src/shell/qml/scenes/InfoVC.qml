import QtQuick
import Nimbrel.Shell

// The panel for one item: name, date, dimension, size and path.
InfoPanel {
    lines: ["lblFileName", "lblDate", "lblDimension", "lblSize", "lblFilePath"]
}
