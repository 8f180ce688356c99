# One page of the guide as HTML: cmake -DCONVERSOR=cmark-gfm -DTEXTO=page.md -DPAGINA=page.html -P pagina.cmake
# The text is CommonMark with tables. Links between pages follow them into HTML, headings get the names under which
# links know them.
execute_process(COMMAND ${CONVERSOR} --extension table --to html ${TEXTO}
                OUTPUT_VARIABLE corpo COMMAND_ERROR_IS_FATAL ANY)

# CMake takes a semicolon for the end of a list's item and brackets for a group of them.
string(REPLACE ";" "&#59$<>" corpo "${corpo}")

string(REGEX MATCHALL "<h[1-6]>[^\n]*</h[1-6]>" titulos "${corpo}")
foreach(titulo IN LISTS titulos)
    string(REGEX REPLACE "^<h([1-6])>.*" "\\1" nivel "${titulo}")
    string(REGEX REPLACE "<[^>]*>" "" texto "${titulo}")
    string(TOLOWER "${texto}" nome)
    string(REGEX REPLACE "&[a-z]+[^a-z ]*" "" nome "${nome}")
    string(REGEX REPLACE "[][.,:!?()\"'/]" "" nome "${nome}")
    string(REPLACE " " "-" nome "${nome}")
    string(REPLACE "${titulo}" "<h${nivel} id=\"${nome}\">${texto}</h${nivel}>" corpo "${corpo}")
    if(NOT DEFINED primeiro)
        set(primeiro "${texto}")
    endif()
endforeach()

string(REGEX REPLACE "href=\"README\\.md" "href=\"index.html" corpo "${corpo}")
string(REGEX REPLACE "href=\"([a-z-]+)\\.md" "href=\"\\1.html" corpo "${corpo}")

get_filename_component(nome_da_pagina ${PAGINA} NAME)
set(volta "")
if(NOT nome_da_pagina STREQUAL "index.html")
    set(volta "<p class=\"volta\"><a href=\"index.html\">Guia do Cozinhario 2005</a></p>\n")
endif()
set(html "<!DOCTYPE html>
<html lang=\"pt-BR\">
<head>
<meta charset=\"utf-8\">
<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">
<title>${primeiro}</title>
<link rel=\"stylesheet\" href=\"guia.css\">
</head>
<body>
${volta}${corpo}${volta}</body>
</html>
")
string(REPLACE "&#59$<>" ";" html "${html}")
file(WRITE ${PAGINA} "${html}")
