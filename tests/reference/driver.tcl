# A headless Chromium for the tests, driven through chromedriver's HTTP interface. Relies on the
# Debian packages chromium, chromium-driver and tcllib, and Tcl's package http.

package require http
package require json

namespace eval driver {
    variable process {} ;# chromedriver's output
    variable base {}    ;# its address, with the session when there is one
}

# Starts both, with a profile of their own in `folder`.
proc driver::start {folder} {
    variable process
    variable base
    set process [open "|chromedriver --port=0 2>@1" r]
    while {[gets $process line] >= 0} {
        if {[regexp {successfully on port (\d+)} $line -> port]} break
    }
    if {![info exists port]} { error "chromedriver did not start" }
    set base http://127.0.0.1:$port/session
    set words {}
    foreach word [list headless no-sandbox disable-gpu disable-quic no-first-run \
            disable-background-networking disable-component-update disable-sync hide-scrollbars \
            user-data-dir=$folder] {
        lappend words [quoted --$word]
    }
    set options "\{\"args\": \[[join $words ,]\]\}"
    set answer [post {} "\{\"capabilities\": \{\"alwaysMatch\": \{\"goog:chromeOptions\": $options,\
        \"goog:loggingPrefs\": \{\"browser\": \"ALL\", \"performance\": \"ALL\"\}\}\}\}"]
    append base /[dict get $answer sessionId]
}

# Whatever ends the tests ends the browser too.
trace add execution ::exit enter {::driver::stop ;#}

proc driver::stop {} {
    variable process
    variable base
    if {$process eq {}} return
    catch { request $base DELETE {} }
    catch { exec kill [pid $process] }
    catch { close $process }
    set process {}
}

proc driver::quoted {text} {
    return "\"[string map {\\ \\\\ \" \\\" \n \\n} $text]\""
}

proc driver::request {address method body} {
    set words [list -timeout 60000 -method $method]
    if {$method eq "POST"} { lappend words -type application/json -query $body }
    set token [http::geturl $address {*}$words]
    set code [http::ncode $token]
    set data [encoding convertfrom utf-8 [http::data $token]]
    http::cleanup $token
    set value [dict get [json::json2dict $data] value]
    if {$code != 200} { error "chromedriver: $value" }
    return $value
}

proc driver::post {command body} {
    variable base
    return [request $base$command POST $body]
}

# --------------------------------------------------------------------------- what a reader does

proc driver::visit {address} { post /url "\{\"url\": [quoted $address]\}" }

# Runs JavaScript in the page; -> what it returns.
proc driver::script {text} { post /execute/sync "\{\"script\": [quoted $text], \"args\": \[\]\}" }

# Types into whatever has the focus; {Enter} and the like are keys.
proc driver::type {keys} {
    set actions {}
    foreach key $keys {
        set code [string map {
            Enter \\uE007 Down \\uE015 Up \\uE013 Escape \\uE00C Tab \\uE004 Space { }
        } $key]
        foreach kind {keyDown keyUp} {
            lappend actions "\{\"type\": \"$kind\", \"value\": \"$code\"\}"
        }
    }
    post /actions "\{\"actions\": \[\{\"type\": \"key\", \"id\": \"keys\", \"actions\":\
        \[[join $actions ,]\]\}\]\}"
}

# Types a word letter by letter.
proc driver::write {text} {
    foreach letter [split $text {}] { type [list [expr {$letter eq { } ? "Space" : $letter}]] }
}

# The messages since the last time, of a kind: browser (complaints) or performance (what is loaded).
proc driver::messages {kind} {
    set messages {}
    foreach entry [post /se/log "\{\"type\": [quoted $kind]\}"] {
        lappend messages [dict get $entry message]
    }
    return $messages
}

# A command of the browser's own protocol; words are a JSON object.
proc driver::browser {command words} {
    post /goog/cdp/execute "\{\"cmd\": [quoted $command], \"params\": $words\}"
}

proc driver::window {width height} {
    browser Emulation.setDeviceMetricsOverride "\{\"width\": $width, \"height\": $height,\
        \"deviceScaleFactor\": 1, \"mobile\": false\}"
}

proc driver::media {kind scheme} {
    browser Emulation.setEmulatedMedia "\{\"media\": [quoted $kind], \"features\":\
        \[\{\"name\": \"prefers-color-scheme\", \"value\": [quoted $scheme]\}\]\}"
}

proc driver::screenshot {file} {
    variable base
    set picture [request $base/screenshot GET {}]
    file mkdir [file dirname $file]
    exec base64 -d > $file << $picture
}
