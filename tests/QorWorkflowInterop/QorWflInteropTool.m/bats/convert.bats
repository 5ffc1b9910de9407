#!/usr/bin/env bats
# qorwfl convert: a record from one form into another.

# shellcheck disable=SC2154 # $stderr and $output, which run assigns
bats_require_minimum_version 1.5.0
load shell.bash

@test "both forms and the file are required" {
    qorwfl convert "$EXAMPLES/reply.xpdl"
    assert_usage "--from is required"
    qorwfl convert --from xpdl "$EXAMPLES/reply.xpdl"
    assert_usage "--to is required"
    qorwfl convert --from xpdl --to json
    assert_usage "FILE is required"
    qorwfl convert --from dot --to json "$EXAMPLES/reply.xpdl"
    assert_usage "--from: dot not in {xpdl,text,json}"
    qorwfl convert --from xpdl --to dot "$EXAMPLES/reply.xpdl"
    assert_usage "--to: dot not in {xpdl,text,json}"
    qorwfl convert --from xpdl --to json "$EXAMPLES/reply.xpdl" other.xpdl
    assert_usage "other.xpdl"
}

@test "every form into every form and back" {
    cat >record.txt <<'END'
id="A1";
name="Review";
abstract="x";
priority="High";
extid="e";
status="s";
duration=3;
durationUnit="D";
owner="o";
documentation="d";
generation=2;
process.id="P7";
process.name="n";
process.context="c";
process.datas.length=1;
process.datas.1.name="D1";
process.datas.1.type="Part";
process.datas.1.extid="u";
process.datas.1.value="v";
inputs.length=1;
inputs.1.name="D1";
outputs.length=0;
END
    for form in xpdl text json; do
        qorwfl convert --from text --to $form record.txt -o there --created now
        assert_status 0
        assert_stderr ""
        for other in xpdl text json; do
            qorwfl convert --from $form --to $other there -o further --created now
            assert_status 0
            qorwfl convert --from $other --to text further -o back.txt
            assert_status 0
            assert_stderr ""
            cmp record.txt back.txt
        done
    done
}

@test "an action is converted with the words of a property file" {
    qorwfl convert --from json --to text --config "$EXAMPLES" "$EXAMPLES/review.json"
    assert_status 0
    assert_contains "$output" 'status="In work";'
}

@test "standard input, output to a folder" {
    qorwfl convert --from xpdl --to json - -o out/ <"$EXAMPLES/reply.xpdl"
    assert_status 0
    [[ -s out/standard-input.json ]]
}

@test "a value that the record text form cuts is told with file and line" {
    qorwfl export "$EXAMPLES/nameless.json" --format text
    printf '%s\n' "${output/owner=\"j.doe\"/owner=\"j\"doe\"}" >record.txt
    qorwfl convert --from text --to json record.txt
    assert_status 0
    assert_contains "$output" '"owner": "j",'
    assert_contains "$stderr" "qorwfl: record.txt:9: owner is read up to the quote in it only"
    assert_contains "$stderr" "qorwfl: record.txt:18: process.datas.1.extid is read up to its first 79 characters only"
}

@test "a text whose lines are not those of the form is refused with file, line and what was expected" {
    qorwfl export "$EXAMPLES/minimal.json" --format text -o good.txt
    sed 3d good.txt >missing.txt
    qorwfl convert --from text --to json missing.txt
    assert_status 1
    assert_output ""
    assert_stderr 'qorwfl: missing.txt:3: expected abstract=", found priority="";'
    head -n 5 good.txt >cut.txt
    qorwfl convert --from text --to json cut.txt
    assert_stderr 'qorwfl: cut.txt:6: expected status=", found the end of the text'
    sed 's/^duration=.*/duration=long;/' good.txt >word.txt
    qorwfl convert --from text --to json word.txt
    assert_contains "$stderr" "qorwfl: word.txt:7: expected duration to have a number"
    sed 's/^inputs.length=.*/inputs.length=7;/' good.txt >count.txt
    qorwfl convert --from text --to json count.txt
    assert_status 1
    assert_stderr 'qorwfl: count.txt:17: expected inputs.1.name=", found outputs.length=0;'
    { cat good.txt && echo more; } >more.txt
    qorwfl convert --from text --to json more.txt
    assert_stderr 'qorwfl: more.txt:18: expected the end of the record, found more'
    : >empty.txt
    qorwfl convert --from text --to json empty.txt
    assert_stderr 'qorwfl: empty.txt:1: expected id=", found the end of the text'
}

@test "a document with a required element missing gives no output" {
    sed 's/ProcessHeader/Gone/g' "$EXAMPLES/reply.xpdl" >short.xpdl
    qorwfl convert --from xpdl --to json short.xpdl -o out.json
    assert_status 1
    assert_stderr "qorwfl: short.xpdl: Package/WorkflowProcesses/WorkflowProcess/ProcessHeader: required element missing"
    [[ ! -e out.json ]]
}

@test "a record that the text form cannot hold is refused" {
    echo '{"record": {"name": "€"}}' >wide.json
    qorwfl convert --from json --to text wide.json
    assert_status 1
    assert_stderr "qorwfl: wide.json: name: has characters outside ISO-8859-1"
}

@test "a record in JSON is refused with file and place" {
    local text message
    while IFS='|' read -r text message; do
        printf '%s' "$text" >record.json
        qorwfl convert --from json --to json record.json
        assert_status 1
        assert_output ""
        assert_stderr "qorwfl: record.json: $message"
    done <<'END'
{"record": 1}|/record: expected an object, found the number 1
{"record": {"id": 1}}|/record/id: expected a text, found the number 1
{"record": {"generation": 3000000000}}|/record/generation: expected a whole number from -2147483648 to 2147483647, found the number 3000000000
{"record": {"inputs": "D1"}}|/record/inputs: expected a list, found "D1"
{"record": {"inputs": ["D1", 2]}}|/record/inputs/1: expected a text, found the number 2
{"record": {"inputs": ["D1"], "inputNumber": 2}}|/record/inputNumber: expected the number of elements of the list, which is 1, found the number 2
{"record": {"outputNumber": 1}}|/record/outputNumber: expected the number of elements of the list, which is 0, found the number 1
{"record": {"process": {"datas": [1]}}}|/record/process/datas/0: expected an object, found the number 1
{"record": {"process": {"datas": [{"id": "x"}]}}}|/record/process/datas/0/id: unknown member; known are name, type, extid, value
{"record": {"process": {"Id": "x"}}}|/record/process/Id: unknown member; known are id, name, context, datas, dataNumber
END
}

@test "what a form cannot hold is lost without a word, but for a character that it refuses" {
    local long member form
    long=$(printf 'x%.0s' {1..100})
    printf '{"record": {"name": "a\\"b", "owner": "%s", "participant": "p", "status": null}}' "$long" >record.json
    qorwfl convert --from json --to text record.json
    assert_status 0
    assert_stderr ""
    assert_contains "$output" 'name="a"b";'
    assert_contains "$output" "owner=\"$long\";"
    assert_contains "$output" 'status="";'
    refute_contains "$output" participant
    cat >record.json <<'END'
{"record": {"name": "a\tb\nc", "priority": null, "abstract": "", "documentation": "a\r\nb"}}
END
    qorwfl convert --from json --to xpdl record.json -o record.xpdl
    assert_status 0
    assert_stderr ""
    qorwfl convert --from xpdl --to json record.xpdl
    for member in '"name": "a b c"' '"priority": "\n"' '"abstract": "\n"' '"documentation": "a\nb"'; do
        assert_contains "$output" "$member"
    done
    for form in text xpdl; do
        echo '{"record": {"name": "€"}}' >record.json
        qorwfl convert --from json --to $form record.json -o out
        assert_status 1
        assert_contains "$stderr" "outside ISO-8859-1"
        [[ ! -e out ]]
    done
}
