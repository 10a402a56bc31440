#pragma once

#include "platform/values/FileType.h"

/// The file types that the program registers. Not all of them are accepted in a drop.
namespace FileTypes {

extern platform::FileType pImageNanoSIMS, pImageTiff, pDataVantageXray, pImageXBmp, pDataVornalite, pImagePng,
    pImagePict, pImageGif, pImageJpeg;

/// Fills and registers the types; once, at start.
void _Initialize();

}  // namespace FileTypes
