# What all pages share: escaping, links, the frame around a page. Pages are also well-formed XML, so
# that a small parser can check them.

namespace eval html {}

proc html::escape {text} { string map {& &amp; < &lt; > &gt; \" &quot;} $text }

# Turns a description into a sentence.
proc html::sentence {text} {
    return "[escape [string toupper [string index $text 0]][string range $text 1 end]]."
}

proc html::code {text} { return "<code>[escape $text]</code>" }
proc html::link {href text} { return "<a href=\"$href\">[escape $text]</a>" }
proc html::code_link {href text} { return "<a href=\"$href\"><code>[escape $text]</code></a>" }

# A table: headings, then rows of cells in HTML. The first cell of a row is its heading. A row may
# begin with an anchor: {id {cell ...}}. If the table is too wide, its frame scrolls.
proc html::table {caption headings rows} {
    set text "<div class=\"wide\" tabindex=\"0\" role=\"region\"\
        aria-label=\"[escape $caption]\"><table>\n"
    append text "<caption>[escape $caption]</caption>\n<thead><tr>"
    foreach heading $headings { append text "<th scope=\"col\">[escape $heading]</th>" }
    append text "</tr></thead>\n<tbody>\n"
    foreach {id cells} $rows {
        append text [expr {$id eq {} ? "<tr>" : "<tr id=\"$id\">"}]
        append text "<th scope=\"row\">[lindex $cells 0]</th>"
        foreach cell [lrange $cells 1 end] { append text "<td>$cell</td>" }
        append text "</tr>\n"
    }
    return "$text</tbody>\n</table></div>\n"
}

# The page around a body. `here` is the page's file name: the link to it is marked.
proc html::page {here title version body} {
    set text "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\" />\n"
    append text "<title>[escape $title] - qxsh reference</title>\n"
    append text "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\" />\n"
    append text "<meta name=\"color-scheme\" content=\"light dark\" />\n"
    append text "<link rel=\"stylesheet\" href=\"style.css\" />\n"
    append text "<script defer=\"defer\" src=\"entries.js\"></script>\n"
    append text "<script defer=\"defer\" src=\"search.js\"></script>\n</head>\n<body>\n"
    append text "<a class=\"skip\" href=\"#content\">Skip to the content</a>\n"
    append text "<header class=\"top\">\n<p class=\"brand\"><a href=\"index.html\">qxsh</a>\
        <span>reference $version</span></p>\n"
    append text "<form class=\"search\" role=\"search\" action=\"index.html\" hidden=\"hidden\">\n"
    append text "<label for=\"query\">Search</label>\n<input id=\"query\" name=\"q\"\
        type=\"search\" autocomplete=\"off\" spellcheck=\"false\"\
        placeholder=\"command, record, field, status\" />\n"
    append text "<p id=\"found\" role=\"status\"></p>\n<ol id=\"results\"></ol>\n</form>\n"
    append text "<nav aria-label=\"Pages\"><ul>\n"
    foreach {file label} {
        index.html Areas commands.html Commands package.html {Package qx} statuses.html Statuses
        conventions.html Conventions
    } {
        set mark [expr {$file eq $here ? " aria-current=\"page\"" : {}}]
        append text "<li><a href=\"$file\"$mark>$label</a></li>\n"
    }
    append text "</ul></nav>\n</header>\n"
    append text "<svg class=\"defs\" aria-hidden=\"true\" width=\"0\" height=\"0\"><defs><pattern\
        id=\"hatch\" width=\"6\" height=\"6\" patternUnits=\"userSpaceOnUse\"\
        patternTransform=\"rotate(45)\"><path class=\"hatch\"\
        d=\"M0 0V6\" /></pattern></defs></svg>\n"
    append text "<main id=\"content\">\n<h1>[escape $title]</h1>\n$body</main>\n"
    append text "<footer><p>Made from the catalogue of qxsh $version.</p></footer>\n"
    return "$text</body>\n</html>\n"
}
