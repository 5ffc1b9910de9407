#!/usr/bin/env bats
# What check shows, how it ends, and how it behaves on a terminal.

bats_require_minimum_version 1.5.0
load shell.bash

# A document of which nothing is said, and one with an error, a warning and a note.
documents() {
    cat >whole.xpdl <<'END'
<Package Id="p" Name="n">
<PackageHeader><Vendor>V</Vendor></PackageHeader>
<Participants><Participant Id="p"><ParticipantType Type="HUMAN"/></Participant></Participants>
<WorkflowProcesses><WorkflowProcess Id="i" Name="n"><ProcessHeader DurationUnit="D"/><DataFields/>
<Activities><Activity Id="i" Name="n">
<Description>d</Description><Performer>p</Performer><Priority>1</Priority>
<SimulationInformation><TimeEstimation><Duration>5</Duration></TimeEstimation></SimulationInformation>
<Documentation>d</Documentation>
<ExtendedAttributes>
<ExtendedAttribute Name="status" Value="s"/><ExtendedAttribute Name="externId" Value="e"/>
<ExtendedAttribute Name="generation" Value="1"/>
</ExtendedAttributes></Activity></Activities>
<ExtendedAttributes><ExtendedAttribute Name="context" Value="c"/></ExtendedAttributes>
</WorkflowProcess></WorkflowProcesses></Package>
END
    sed 's/<Duration>5/<Duration>five/' whole.xpdl >warning.xpdl
    sed 's/<Duration>5/<Limit\/><Duration>5/' whole.xpdl >note.xpdl
    sed 's/<Vendor>V<\/Vendor>//' whole.xpdl >error.xpdl
}


@test "a document that is read whole: one line, status 0" {
    documents
    qorwfl check whole.xpdl
    assert_status 0
    assert_output "whole.xpdl: read whole (0 errors, 0 warnings, 0 notes)"
    assert_stderr ""
}

@test "warnings and notes: status 0; errors: status 1" {
    documents
    qorwfl check note.xpdl warning.xpdl
    assert_status 0
    assert_contains "$output" "note.xpdl:7:40: note: element Limit is ignored [QW201]"
    assert_contains "$output" "warning.xpdl:7:50: warning: \"five\" is no number that fits"
    qorwfl check error.xpdl
    assert_status 1
    assert_contains "$output" "error.xpdl:2:1: error: required element Vendor is missing"
    assert_stderr ""
}

@test "--strict: warnings have status 1, notes have not" {
    documents
    qorwfl check --strict warning.xpdl
    assert_status 1
    qorwfl check --strict note.xpdl
    assert_status 0
}

@test "standard input is -" {
    documents
    run --separate-stderr "$QORWFL" check - <warning.xpdl
    assert_status 0
    assert_contains "$output" "standard input:7:50: warning: "
}

@test "--format json and sarif are JSON" {
    documents
    qorwfl check --format json whole.xpdl error.xpdl
    assert_status 1
    assert_contains "$output" '"verdict": "readWhole"'
    assert_contains "$output" '"verdict": "stops"'
    qorwfl check --format=sarif whole.xpdl
    assert_status 0
    assert_contains "$output" '"version": "2.1.0"'
}

@test "-o takes the findings, whole, and nothing is printed" {
    documents
    qorwfl check error.xpdl
    local printed=$output
    qorwfl check -o findings error.xpdl
    assert_status 1
    assert_output ""
    [[ $(<findings) == "$printed" ]] || fail "expected the findings in the file"
    qorwfl check --output findings whole.xpdl
    assert_status 0
    [[ $(<findings) == "whole.xpdl: read whole (0 errors, 0 warnings, 0 notes)" ]] || fail "expected the new findings"
}

@test "-o with a folder that is not there: a message and status 1" {
    documents
    qorwfl check -o no/findings whole.xpdl
    assert_status 1
    assert_output ""
    assert_contains "${stderr-}" "no/findings"
}

@test "a file that is not there is a finding, and the others are checked" {
    documents
    qorwfl check gone.xpdl whole.xpdl
    assert_status 1
    assert_contains "$output" "gone.xpdl: error: cannot be read: No such file or directory [QW007]"
    assert_contains "$output" "whole.xpdl: read whole"
}

@test "no file, an unknown format and an unknown option are wrong usage" {
    documents
    qorwfl check
    assert_usage "FILE"
    qorwfl check --format xml whole.xpdl
    assert_usage "--format"
    qorwfl check --stricter whole.xpdl
    assert_usage "--stricter"
}

@test "a terminal has colours, not with NO_COLOR, not on a dumb one, not in a file or a pipe" {
    documents
    on_terminal "$QORWFL check error.xpdl"
    assert_status 1
    assert_contains "$output" $'\033[1;31merror\033[0m: required '
    on_terminal "$QORWFL check warning.xpdl note.xpdl"
    assert_contains "$output" $'\033[1;35mwarning\033[0m: '
    assert_contains "$output" $'\033[1;36mnote\033[0m: '
    NO_COLOR=1 on_terminal "$QORWFL check error.xpdl"
    refute_contains "$output" $'\033'
    TERM_HERE=dumb on_terminal "$QORWFL check error.xpdl"
    refute_contains "$output" $'\033'
    on_terminal "$QORWFL check -o findings error.xpdl"
    refute_contains "$(<findings)" $'\033'
    on_terminal "$QORWFL check --format json error.xpdl"
    refute_contains "$output" $'\033'
    qorwfl check error.xpdl
    refute_contains "$output" $'\033'
}

@test "control characters of a document and of a file name do not reach the terminal" {
    documents
    sed 's/<Duration>5/<Duration>\&#x9b;31m\&#x85;x/' whole.xpdl >$'bell\a.xpdl'
    on_terminal "$QORWFL check --format text bell*.xpdl"
    assert_contains "$output" 'bell\x07.xpdl:7:50:'
    assert_contains "$output" '"\u{009B}31m\u{0085}x" is no number'
    refute_contains "$output" $'\a'
    refute_contains "$output" $'\xc2\x9b'
}

@test "the same files give the same output" {
    documents
    local format
    for format in text json sarif; do
        qorwfl check --format "$format" error.xpdl warning.xpdl note.xpdl
        local first=$output
        qorwfl check --format "$format" error.xpdl warning.xpdl note.xpdl
        assert_output "$first"
    done
}
