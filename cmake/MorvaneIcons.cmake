# SPDX-License-Identifier: MIT
# Renders the drawings of src/resources/icons/ to the pictures that the program uses.

find_program(RSVG_CONVERT rsvg-convert REQUIRED)

# morvane_render(OUTPUT SVG WIDTH HEIGHT COLOUR): one picture, of that size in pixels. COLOUR is
# what `currentColor` stands for in the drawing.
function(morvane_render output svg width height colour)
    string(REPLACE "#" "" colour_name "${colour}")
    set(style "${CMAKE_BINARY_DIR}/icons/${colour_name}.css")
    if(NOT EXISTS "${style}")
        file(WRITE "${style}" "svg { color: ${colour}; }\n")
    endif()
    get_filename_component(folder "${output}" DIRECTORY)
    file(MAKE_DIRECTORY "${folder}")
    add_custom_command(OUTPUT "${output}"
        COMMAND "${RSVG_CONVERT}" --stylesheet "${style}" -w ${width} -h ${height}
                -o "${output}" "${svg}"
        DEPENDS "${svg}" "${style}"
        COMMENT "Rendering ${output}" VERBATIM)
endfunction()

# morvane_icon(FOLDER NAME SVG WIDTH HEIGHT COLOUR): FOLDER/NAME.png and its double NAME@2x.png,
# which are added to the caller's list MORVANE_ICONS as NAME.png and NAME@2x.png.
macro(morvane_icon folder name svg width height colour)
    math(EXPR double_width "2 * ${width}")
    math(EXPR double_height "2 * ${height}")
    morvane_render("${folder}/${name}.png" "${svg}" ${width} ${height} "${colour}")
    morvane_render("${folder}/${name}@2x.png" "${svg}" ${double_width} ${double_height} "${colour}")
    list(APPEND MORVANE_ICONS "${name}.png" "${name}@2x.png")
endmacro()

# morvane_icon_table(FOLDER TABLE SVG_FOLDER): one morvane_icon() for each line of the table, "name
# svg size colour"; a size is one number or WIDTHxHEIGHT.
macro(morvane_icon_table folder table svg_folder)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${table}")
    file(STRINGS "${table}" table_lines REGEX "^[a-z]")
    foreach(table_line IN LISTS table_lines)
        if(NOT table_line MATCHES "^([^ ]+) +([a-z_]+) +([0-9]+)x?([0-9]*) +(#[0-9A-F]+)$")
            message(FATAL_ERROR "${table}: not \"name svg size colour\": ${table_line}")
        endif()
        set(table_height "${CMAKE_MATCH_4}")
        if(table_height STREQUAL "")
            set(table_height "${CMAKE_MATCH_3}")
        endif()
        morvane_icon("${folder}" "${CMAKE_MATCH_1}" "${svg_folder}/${CMAKE_MATCH_2}.svg"
            "${CMAKE_MATCH_3}" "${table_height}" "${CMAKE_MATCH_5}")
    endforeach()
endmacro()

# morvane_format_icons(FOLDER KIND TYPE COLOUR CATALOGUE TEMPLATE): the page with a word on a band,
# for each icon word among the categories of that type in the catalogue, as format/KIND/WORD.png.
macro(morvane_format_icons folder kind type colour catalogue template)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${catalogue}" "${template}")
    file(STRINGS "${catalogue}" category_lines
        REGEX "^ *<displaycategory .*type=\"${type}\" icon=\"[A-Za-z0-9]+\"")
    foreach(category_line IN LISTS category_lines)
        string(REGEX REPLACE ".* icon=\"([A-Za-z0-9]+)\".*" "\\1" WORD "${category_line}")
        string(LENGTH "${WORD}" word_length)
        if(word_length GREATER 3)
            set(SIZE 7.9)
        else()
            set(SIZE 9)
        endif()
        set(word_svg "${CMAKE_BINARY_DIR}/icons/${kind}_${WORD}.svg")
        configure_file("${template}" "${word_svg}" @ONLY)
        morvane_icon("${folder}" "format/${kind}/${WORD}" "${word_svg}" 32 38 "${colour}")
    endforeach()
endmacro()
