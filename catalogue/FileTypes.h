#pragma once

#include "platform/values/FileType.h"

/// The kinds of file that the program knows by name. The table is larger than what may be dropped.
namespace FileTypes {

extern platform::FileType pImageNanoSIMS, pImageTiff, pDataVantageXray, pImageXBmp, pDataVornalite, pImagePng,
    pImagePict, pImageGif, pImageJpeg;

/// Fills and registers the types; once, at start.
void _Initialize();

}  // namespace FileTypes
