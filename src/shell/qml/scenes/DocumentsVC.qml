import QtQuick
import Nimbrel.Shell

// The documents browser: the browse frame's scene with the import button beside the layout switch.
ImagesVC {
    id: documents
    OutletButton {
        objectName: "importButton"
        view: documents.o("btnImport")
        z: 10
        x: documents.width - 136; y: 0
        width: 44; height: 44
    }
}
