#!/usr/bin/env bats
# qorwfl graph: a record as a picture.

# shellcheck disable=SC2154,SC2016 # $stderr and $output, which run assigns; single quotes for pictures as they stand
bats_require_minimum_version 1.5.0
load shell.bash

# A record whose every text has what means something in one of the languages of pictures.
hostile_record() {
    cat <<'END'
{"record": {
  "id": "a\"b\\c\\N\\", "name": "<b>&amp;&lt;</b>\nsecond; line", "status": "[x](y) {z} %%{init: 1}%% `d` #35;",
  "participant": "end", "participantType": "\u0001\u0000\u009f|",
  "process": {"id": "}", "name": "\"]", "datas": [{"name": "D \"1\"", "value": "\\", "type": "]"}]},
  "inputs": ["D \"1\"", "unknown\\"], "outputs": [""]}}
END
}

@test "dot is the form as a rule" {
    qorwfl graph "$EXAMPLES/reply.xpdl"
    assert_status 0
    assert_stderr ""
    assert_contains "$output" 'digraph activity {'
    assert_contains "$output" 'label="Release of pump HP-40\nPRC-311";'
    assert_contains "$output" 'activity [shape=box, style=rounded, label="Review housing\nPRC-311-04\nCompleted"];'
    assert_contains "$output" 'participant [shape=ellipse, label="k.brückner\nHUMAN"];'
    assert_contains "$output" 'input1 [shape=note, label="HP40-100\nHousing\nVERANT_QORPart"];'
    assert_contains "$output" 'input5 -> activity;'
    assert_contains "$output" 'activity -> output3;'
    local picture=$output
    qorwfl graph "$EXAMPLES/reply.xpdl" --format dot
    assert_output "$picture"
}

@test "mermaid shows the same" {
    qorwfl graph "$EXAMPLES/reply.xpdl" --format mermaid
    assert_status 0
    assert_contains "$output" 'flowchart LR'
    assert_contains "$output" 'subgraph process ["Release of pump HP-40<br/>PRC-311"]'
    assert_contains "$output" 'activity("Review housing<br/>PRC-311-04<br/>Completed")'
    assert_contains "$output" 'participant(["k.brückner<br/>HUMAN"])'
    assert_contains "$output" 'input1["HP40-100<br/>Housing<br/>VERANT_QORPart"]'
    assert_contains "$output" 'input5 --> activity'
    assert_contains "$output" 'activity --> output3'
}

@test "svg is what Graphviz draws of dot" {
    qorwfl graph "$EXAMPLES/reply.xpdl" --format svg
    assert_status 0
    assert_stderr ""
    assert_contains "$output" "<svg "
    assert_contains "$output" ">k.brückner</text>"
    local picture=$output
    qorwfl graph "$EXAMPLES/reply.xpdl"
    [[ $(dot -Tsvg <<<"$output") == "$picture" ]]
}

@test "svg without Graphviz says so, and gives nothing" {
    mkdir none
    run --separate-stderr env PATH="$PWD/none" "$QORWFL" graph "$EXAMPLES/reply.xpdl" --format svg -o out.svg
    assert_status 1
    assert_output ""
    assert_stderr "qorwfl: Graphviz's program dot: not found along PATH; the format svg needs it, --format dot and \
--format mermaid do not"
    [[ ! -e out.svg ]]
}

@test "a Graphviz that fails is told with its own words" {
    mkdir bin
    printf '#!/bin/sh\necho "cannot draw" >&2\nexit 3\n' >bin/dot
    chmod +x bin/dot
    run --separate-stderr env PATH="$PWD/bin" "$QORWFL" graph "$EXAMPLES/reply.xpdl" --format svg
    assert_status 1
    assert_stderr "qorwfl: Graphviz's program dot: drew nothing: cannot draw"
    printf '#!/bin/sh\nkill -9 $$\n' >bin/dot
    run --separate-stderr env PATH="$PWD/bin" "$QORWFL" graph "$EXAMPLES/reply.xpdl" --format svg
    assert_status 1
    assert_stderr "qorwfl: Graphviz's program dot: drew nothing"
}

@test "no shell stands between: a dot that reads nothing and writes much does no harm" {
    mkdir bin
    printf '#!/bin/sh\nexec <&-\nexec head -c 300000 /dev/zero\n' >bin/dot
    chmod +x bin/dot
    {
        printf '{"record": {"inputs": [""'
        printf ', "%s"' $(seq 20000)
        printf ']}}'
    } >large.json
    env PATH="$PWD/bin:$PATH" "$QORWFL" graph large.json --format svg -o out.svg
    [[ $(wc -c <out.svg) -eq 300000 ]]
}

@test "texts are escaped for dot" {
    hostile_record >record.json
    qorwfl graph record.json
    assert_status 0
    assert_contains "$output" 'label="<b>&amp;amp;&amp;lt;</b>\nsecond; line\na\"b\\c\\N\\\n[x](y) {z} %%{init: 1}%% `d` #35;"];'
    assert_contains "$output" 'label="D \"1\"\n\\\n]"];'
    assert_contains "$output" 'input2 [shape=note, label="unknown\\", style=dashed];'
    assert_contains "$output" 'participant [shape=ellipse, label="end\n���|"];'
    qorwfl graph record.json --format svg
    assert_status 0
    assert_contains "$output" '>&lt;b&gt;&amp;amp;&amp;lt;&lt;/b&gt;</text>'
    assert_contains "$output" '>a&quot;b\c\N\</text>'
    assert_contains "$output" '>unknown\</text>'
}

@test "texts are escaped for mermaid" {
    hostile_record >record.json
    qorwfl graph record.json --format mermaid
    assert_status 0
    assert_contains "$output" 'activity("#60;b#62;#38;amp#59;#38;lt#59;#60;/b#62;<br/>second#59; line<br/>a#34;b#92;c#92;N#92;<br/>#91;x#93;#40;y#41; #123;z#125; #37;#37;#123;init: 1#125;#37;#37; #96;d#96; #35;35#59;")'
    assert_contains "$output" 'input2["unknown#92;"]'
    assert_contains "$output" 'style input2 stroke-dasharray: 5 5'
    assert_contains "$output" 'output1[" "]'
}

@test "a record without anything is drawn all the same" {
    echo '{"record": {}}' >empty.json
    for format in dot mermaid svg; do
        qorwfl graph empty.json --format $format
        assert_status 0
        refute_contains "$output" "participant"
    done
}

@test "every form is recognised, and --from says which it is" {
    qorwfl graph "$EXAMPLES/reply.xpdl"
    local picture=$output
    qorwfl convert --from xpdl --to json "$EXAMPLES/reply.xpdl" -o reply.json
    qorwfl graph reply.json
    assert_output "$picture"
    qorwfl graph - <reply.json
    assert_output "$picture"
    qorwfl graph reply.json --from json
    assert_output "$picture"
    qorwfl convert --from xpdl --to text "$EXAMPLES/reply.xpdl" -o reply.txt
    qorwfl graph reply.txt
    assert_status 0
    qorwfl graph reply.json --from xpdl
    assert_status 1
    assert_contains "$stderr" "qorwfl: reply.json:1:1: "
    qorwfl graph "$EXAMPLES/review.json" --config "$EXAMPLES"
    assert_contains "$output" "In work"
}

@test "-o names the output file, or a folder for it" {
    qorwfl graph "$EXAMPLES/reply.xpdl" -o out.dot
    assert_status 0
    assert_output ""
    grep -q digraph out.dot
    qorwfl graph "$EXAMPLES/reply.xpdl" -o out/ --format mermaid
    grep -q flowchart out/reply.mmd
    qorwfl graph "$EXAMPLES/reply.xpdl" -o out/ --format svg
    grep -q '<svg' out/reply.svg
}

@test "wrong usage and wrong inputs" {
    qorwfl graph
    assert_usage "FILE is required"
    qorwfl graph "$EXAMPLES/reply.xpdl" --format png
    assert_usage "--format: png not in {dot,mermaid,svg}"
    qorwfl graph missing
    assert_status 1
    assert_stderr "qorwfl: missing: cannot be read: No such file or directory"
    echo "neither" >other
    qorwfl graph other
    assert_status 1
    assert_contains "$stderr" "qorwfl: other: expected an XPDL document"
}
