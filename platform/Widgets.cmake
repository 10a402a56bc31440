# Windows, controls, menus, dialogs on Qt Widgets. The rest of the tree sees their headers only.
add_library(platform STATIC
  qt/QtApplication.cpp qt/QtButtons.cpp qt/QtCanvas.cpp qt/QtCaption.cpp qt/QtCellModel.cpp qt/QtControl.cpp
  qt/QtDialogs.cpp qt/QtDisplays.cpp qt/QtFileDrop.cpp qt/QtInputs.cpp qt/QtKeys.cpp qt/QtListbox.cpp qt/QtLook.cpp
  qt/QtMenuBar.cpp qt/QtResources.cpp qt/QtScreen.cpp qt/QtText.cpp qt/QtTimer.cpp qt/QtWindow.cpp)
target_link_libraries(platform PUBLIC platform_values PRIVATE Qt6::Widgets)

# The program's own pictures and pointers.
file(GLOB VORNALITE_RESOURCES CONFIGURE_DEPENDS
  "${CMAKE_SOURCE_DIR}/resources/*.png" "${CMAKE_SOURCE_DIR}/resources/hotspots.txt")
qt6_add_resources(platform vornalite PREFIX /vornalite BASE "${CMAKE_SOURCE_DIR}/resources"
  FILES ${VORNALITE_RESOURCES})

# The user's hands and eyes, for tests.
add_library(platform_testing STATIC qt/QtTesting.cpp)
target_link_libraries(platform_testing PUBLIC platform PRIVATE Qt6::Widgets Qt6::Test)
