// The search box: looks through `entries` (entries.js) and shows the best places as plain links.
// Works from disk; without JavaScript the box stays hidden.
(function () {
    "use strict";
    var limit = 50;
    var form = document.querySelector("form.search");
    var box = document.getElementById("query");
    var found = document.getElementById("found");
    var list = document.getElementById("results");

    // How well an entry fits, smaller is better; -1 if a word of the query is nowhere in it.
    function rank(entry, words) {
        var name = entry[0].toLowerCase();
        var text = entry[3].toLowerCase();
        var query = words.join(" ");
        var total = 0;
        for (var i = 0; i < words.length; i++) {
            var at = name.indexOf(words[i]);
            if (at < 0 && text.indexOf(words[i]) < 0) { return -1; }
            total += at < 0 ? 40 : at === 0 || "_. ".indexOf(name.charAt(at - 1)) >= 0 ? 0 : 20;
        }
        if (name === query || name === "qx_" + query) { return 0; }
        // Records and calls before the many commands of their fields.
        return total + 1 + name.length / 100 + (entry[2] === "field" ? 5 : 0);
    }

    function best(query) {
        var words = query.toLowerCase().split(/\s+/).filter(Boolean);
        var hits = [];
        if (words.length) {
            entries.forEach(function (entry) {
                var value = rank(entry, words);
                if (value >= 0) { hits.push([value, entry]); }
            });
        }
        hits.sort(function (a, b) { return a[0] - b[0]; });
        return hits;
    }

    function line(entry) {
        var item = document.createElement("li");
        var link = document.createElement("a");
        var name = document.createElement("code");
        var words = document.createElement("span");
        link.href = entry[1];
        name.textContent = entry[0];
        words.textContent = entry[2] + ": " + entry[3];
        link.appendChild(name);
        link.appendChild(words);
        item.appendChild(link);
        return item;
    }

    function show() {
        var hits = best(box.value);
        list.textContent = "";
        hits.slice(0, limit).forEach(function (hit) { list.appendChild(line(hit[1])); });
        found.textContent = !box.value.trim() ? "" : hits.length === 0 ? "nothing found" :
            hits.length > limit ? "first " + limit + " of " + hits.length :
            hits.length === 1 ? "1 place" : hits.length + " places";
    }

    function hide() {
        list.textContent = "";
        found.textContent = "";
    }

    // Up and down walk through box and links.
    function walk(step) {
        var stops = [box].concat(Array.prototype.slice.call(list.querySelectorAll("a")));
        var next = stops.indexOf(document.activeElement) + step;
        if (next >= 0 && next < stops.length) { stops[next].focus(); }
    }

    box.addEventListener("input", show);
    box.addEventListener("focus", show);
    form.addEventListener("submit", function (event) {
        var first = list.querySelector("a");
        event.preventDefault();
        if (first) { first.click(); }
    });
    list.addEventListener("click", function () { setTimeout(hide, 0); });
    document.addEventListener("click", function (event) {
        if (!form.contains(event.target)) { hide(); }
    });
    document.addEventListener("keydown", function (event) {
        if (event.ctrlKey || event.metaKey || event.altKey) { return; }
        if (event.key === "/" && document.activeElement !== box) {
            event.preventDefault();
            box.focus();
        } else if (!form.contains(document.activeElement)) {
            return;
        } else if (event.key === "Escape") {
            hide();
        } else if (event.key === "ArrowDown" || event.key === "ArrowUp") {
            event.preventDefault();
            walk(event.key === "ArrowDown" ? 1 : -1);
        }
    });

    form.hidden = false;
    var asked = /[?&]q=([^&]*)/.exec(location.search);
    if (asked) {
        box.value = decodeURIComponent(asked[1].replace(/\+/g, " "));
        show();
    }
}());
