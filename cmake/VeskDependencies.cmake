# Every library VESK links, found once for the whole tree.
find_package(Qt6 REQUIRED COMPONENTS Core Sql Gui Widgets PrintSupport Multimedia Charts DataVisualization Svg Test)
find_package(PkgConfig REQUIRED)
pkg_check_modules(MINIZIP REQUIRED IMPORTED_TARGET minizip)
pkg_check_modules(FREEXL REQUIRED IMPORTED_TARGET freexl)
pkg_check_modules(SHAPELIB REQUIRED IMPORTED_TARGET shapelib)
find_package(SQLite3 REQUIRED)
find_package(GTest REQUIRED)
