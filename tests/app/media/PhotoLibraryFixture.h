#pragma once

namespace nimbrel::testing {

// A library whose albums are listed out of source order, so that the lists' order comes from the
// album sources and not from the library: two user albums share a title, one user album holds
// only a video, some albums are empty, and one image sits in several albums.
inline constexpr const char* kMixedLibrary = R"({"photos": {
  "assets": [
    {"id": "I1/L0/001", "created": "2026-03-01T09:30:00Z", "width": 4000, "height": 3000},
    {"id": "I2/L0/001", "created": "2026-03-05T09:30:00Z", "width": 100, "height": 50},
    {"id": "V1/L0/001", "mediaType": 2, "created": "2026-03-03T09:30:00Z"},
    {"id": "V2/L0/001", "mediaType": 2, "created": "2026-03-04T09:30:00Z", "video": "composition"},
    {"id": "A1/L0/001", "mediaType": 3, "created": "2026-03-06T09:30:00Z"}
  ],
  "albums": [
    {"id": "TRIP/L0/040", "title": "Trip", "type": 1, "subtype": 2, "assets": ["I1/L0/001"]},
    {"id": "VIDS/L0/040", "title": "Videos", "type": 2, "subtype": 202, "assets": ["V1/L0/001", "V2/L0/001"]},
    {"id": "LIB/L0/040", "title": "Recents", "type": 2, "subtype": 209,
     "assets": ["I1/L0/001", "I2/L0/001", "V1/L0/001", "V2/L0/001", "A1/L0/001"]},
    {"id": "FAV/L0/040", "title": "Favorites", "type": 2, "subtype": 203, "assets": ["I2/L0/001"]},
    {"id": "CLIPS/L0/040", "title": "Clips", "type": 1, "subtype": 2, "assets": ["V1/L0/001"]},
    {"id": "EMPTY/L0/040", "title": "Empty", "type": 1, "subtype": 2, "assets": []},
    {"id": "SELF/L0/040", "title": "Selfies", "type": 2, "subtype": 210, "assets": ["I1/L0/001"]},
    {"id": "PANO/L0/040", "title": "Panoramas", "type": 2, "subtype": 201, "assets": []},
    {"id": "TRIP2/L0/040", "title": "Trip", "type": 1, "subtype": 2, "assets": ["I2/L0/001", "I1/L0/001"]},
    {"id": "SOUNDS/L0/040", "title": "Sounds", "type": 1, "subtype": 2, "assets": ["A1/L0/001"]},
    {"id": "HIDDEN/L0/040", "title": "Hidden", "type": 2, "subtype": 205, "assets": ["I1/L0/001"]}
  ]}})";

}  // namespace nimbrel::testing
