#include "catalogue/FileTypes.h"

namespace FileTypes {

platform::FileType pImageNanoSIMS, pImageTiff, pDataVantageXray, pImageXBmp, pDataVornalite, pImagePng, pImagePict,
    pImageGif, pImageJpeg;

void _Initialize() {
  pImageNanoSIMS = {"image/NanoSIMS", ".im", "", ""};
  pImageTiff = {"image/tiff", ".jfx;.tif;.tiff", "TIFF", "????"};
  pDataVantageXray = {"data/vantage-xray", ".xray", "", ""};
  pImageXBmp = {"image/x-bmp", ".bmp", "????", "????"};
  pDataVornalite = {"data/Vornalite", ".Vornalite", "Qcfg", "Vrnl"};
  pImagePng = {"image/png", ".png", "PNGf", "ogle"};
  pImagePict = {"image/pict", ".pict;.pic;.pct", "PICT", "ttxt"};
  pImageGif = {"image/gif", ".gif", "GIFf", "prvw"};
  pImageJpeg = {"image/jpeg", ".jfif;.jpe;.jpeg;.jpg", "JPEG", "prvw"};
  for (const platform::FileType* type : {&pImageNanoSIMS, &pImageTiff, &pDataVantageXray, &pImageXBmp, &pDataVornalite,
                                         &pImagePng, &pImagePict, &pImageGif, &pImageJpeg})
    platform::RegisterFileType(*type);
}

}  // namespace FileTypes
