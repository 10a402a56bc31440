// The composite with every control, and the species windows, of a cluster without some species.

#include "tests/support/Story.h"

using namespace platform;

class CompositeStory : public Story {
 protected:
  /// A cluster of Ca, Fe, Si in a catalogue that also has Al and Mg, with highest levels 60, 120 and 240.
  void LoadWithGaps() {
    Drop({WriteMap("a_Al.tif", 8, 6, [](int, int) { return 1; }),
          WriteMap("a_Mg.tif", 8, 6, [](int, int) { return 2; })});
    LoadCluster({"Ca", "Fe", "Si"}, 24, 18, [](int species) {
      return [species](int x, int y) { return (x == 23 && y == 17 ? 60 : x + y) << species; };
    });
  }
};

TEST_F(CompositeStory, ThreeSpeciesMix) {
  LoadWithGaps();
  user::Click(main().PB_RGB);
  Stop("the composite of the three available species");
  user::ChooseRow(composite().RGB_CMY, 1);
  Stop("CMY");
  user::Click(composite().CB_scale);
  Stop("scaled up, each to its own highest level");
  user::ChooseRow(composite().popM[1], 0);
  user::ChooseRow(composite().popM[2], 1);
  Stop("no magenta, yellow as cyan");
  for (int i = 0; i < 3; ++i) composite().sliderRGB[static_cast<std::size_t>(i)].Value(5 - 10 * i);
  composite().Lightness.Value(9);
  Stop("three curves");
  user::ChooseRow(composite().RGB_CMY, 0);
  Stop("RGB");
  user::Click(composite().PB_reset);
  Stop("Reset of all three");
  user::Activate(main());
  user::Key(main(), "Ctrl+2");
  Stop("the composite follows the smoothing");
  user::ChooseMenu("Window50");
  Stop("at 50 %");
  user::Click(main().PB_RGB);
  Stop("the menus are filled again");
  user::Click(composite().PB_SaveImage);
  user::Click(composite().PB_close);
  Stop("closed");
  LoadCluster({"Al", "Mg"}, 8, 8, [](int species) { return [species](int, int) { return 200 + species; }; });
  user::Click(main().PB_RGB);
  Stop("of two species none is chosen");
  user::ChooseRow(composite().popM[0], 2);
  user::Click(composite().PB_SaveImage);
  user::Activate(composite());
  user::ChooseMenu("FileSaveImage");
  Stop("one is chosen and saved twice");
  LoadThree(5, 9);
  user::ChooseMenu("OptionsSmooth1");
  Stop("a cluster of another size below the old composite");
  for (int i = 0; i <= main().TIFexists.Ubound(); ++i) main().TIFexists(i) = false;
  main().SpeciesLB.Refresh();
  user::Activate(main());
  user::Click(main().PB_RGB);
  Stop("none exists");
}

TEST_F(CompositeStory, SpeciesWindowsAreSnapshots) {
  LoadWithGaps();
  main().Slider_colors.Value(4);
  user::Click(main().CB_ScaleUp);
  user::Click(main().PB_AllSpecies);
  Stop("a window for each available species");
  user::Activate(main());
  user::ChooseMenu("Colorsc7");
  user::Click(main().CB_ScaleUp);
  main().Slider_colors.Value(0);
  user::Key(main(), "Ctrl+5");
  user::Key(main(), "Down");
  Stop("they keep table, curve, scale and level");
  user::ChooseMenu("Window300");
  Stop("and follow the zoom");
  user::Click(main().PB_SpeciesUpdate);
  Stop("Update recreates them");
  user::Activate(main());
  user::ChooseMenu("Window100");
  LoadCluster({"Al", "Mg"}, 8, 8, [](int species) { return [species](int, int) { return 200 + species; }; });
  Stop("another cluster leaves them");
  user::Click(main().PB_SpeciesClose);
  Stop("Close All");
}
