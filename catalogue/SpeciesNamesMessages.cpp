#include "catalogue/SpeciesNamesMessages.h"

#include "catalogue/SpeciesNames.h"
#include "platform/widgets/Dialogs.h"

platform::String Globals::ShortNames(const platform::Array<platform::String>& names,
                                     platform::Array<platform::String>& shorts) {
  platform::String cluster = StripCommon(names, shorts);
  if (names.Ubound() != shorts.Ubound()) platform::MsgBox("Error in ShortNames Function.");
  return cluster;
}
