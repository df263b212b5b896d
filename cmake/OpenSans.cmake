# The five fonts are compiled in from the distribution's package, under the names that the program uses.
set(KORA_FONT_ENTRIES "")
foreach(font Bold=Bold Regular=Regular SemiBold=Semibold ExtraBold=ExtraBold Light=Light)
  string(REPLACE "=" ";" names ${font})
  list(GET names 0 name)
  list(GET names 1 file)
  find_file(KORA_FONT_${name} NAMES OpenSans-${file}.ttf OpenSans-${name}.ttf
            PATHS /usr/share/fonts /usr/local/share/fonts
            PATH_SUFFIXES truetype/open-sans open-sans google-opensans TTF NO_DEFAULT_PATH)
  if(NOT KORA_FONT_${name})
    message(FATAL_ERROR "The font OpenSans-${file}.ttf was not found: install the package fonts-open-sans.")
  endif()
  string(APPEND KORA_FONT_ENTRIES
         "    <file alias=\"fonts/OpenSans-${name}.ttf\">${KORA_FONT_${name}}</file>\n")
endforeach()
set(KORA_FONTS_QRC ${CMAKE_BINARY_DIR}/fonts.qrc)
file(CONFIGURE OUTPUT ${KORA_FONTS_QRC} @ONLY
     CONTENT "<RCC>\n  <qresource prefix=\"/\">\n@KORA_FONT_ENTRIES@  </qresource>\n</RCC>\n")
