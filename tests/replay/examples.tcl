# What the tests of recordings know of the examples. Relies on tests/script/shell.tcl.

constraint thousands {[testConstraint fast] || [testConstraint long]} \
    "examples that fill tables take minutes emulated or sanitized; QXSH_TEST_LONG=1 runs them"

# The constraint of a test that records an example and reads the recording several times.
proc example_constraint {name} {
    return [expr {$name in {flow ip_translation rtp} ? "thousands" : {}}]
}
