# Completion of the command qorwfl for fish.

# Whether the words in front are these subcommands, and no further ones.
function __qorwfl_at
    set -l words (commandline -opc)
    set -e words[1]
    set -l plain
    for word in $words
        string match -q -- '-*' $word; or set -a plain $word
    end
    set -l count (count $argv)
    test (count $plain) -ge $count; or return 1
    test $count -eq 0; and test (count $plain) -gt 0; and return 1
    for i in (seq $count)
        test "$plain[$i]" = "$argv[$i]"; or return 1
    end
end

# Whether a subcommand that has subcommands of its own is still without one.
function __qorwfl_without_subcommand
    __qorwfl_at $argv[1]; or return 1
    for name in $argv[2..-1]
        __qorwfl_at $argv[1] $name; and return 1
    end
    return 0
end

complete -c qorwfl -s h -l help -d 'Print help and exit'
complete -c qorwfl -n __qorwfl_at -l version -d 'Print the version and exit'

complete -c qorwfl -f -n __qorwfl_at -a export -d 'Write workflow actions as XPDL documents'
complete -c qorwfl -f -n __qorwfl_at -a import -d 'Write the records that XPDL documents hold'
complete -c qorwfl -f -n __qorwfl_at -a convert -d 'Turn a record from one form into another'
complete -c qorwfl -f -n __qorwfl_at -a check -d 'Tell what the reader takes of documents'
complete -c qorwfl -f -n __qorwfl_at -a config -d 'Check, show or explain a property file'
complete -c qorwfl -f -n __qorwfl_at -a url -d 'Build URLs or take them apart'
complete -c qorwfl -f -n __qorwfl_at -a diff -d 'List what differs between two records'
complete -c qorwfl -f -n __qorwfl_at -a graph -d 'Draw a record'

complete -c qorwfl -n '__qorwfl_at export' -l config -r -d 'The property file, or its folder'
complete -c qorwfl -n '__qorwfl_at export' -l format -x -a 'xpdl text json' -d 'The form of the output'
complete -c qorwfl -n '__qorwfl_at export' -s o -l output -r -d 'The output file or folder'
complete -c qorwfl -n '__qorwfl_at export' -l jobs -x -d 'How many processes work at a time'
complete -c qorwfl -n '__qorwfl_at export' -l created -x -d 'The Created text of a document'

complete -c qorwfl -n '__qorwfl_at import' -l format -x -a 'text json' -d 'The form of the output'
complete -c qorwfl -n '__qorwfl_at import' -s o -l output -r -d 'The output file or folder'
complete -c qorwfl -n '__qorwfl_at import' -l jobs -x -d 'How many processes work at a time'

complete -c qorwfl -n '__qorwfl_at convert' -l from -x -a 'xpdl text json' -d 'The form of the input'
complete -c qorwfl -n '__qorwfl_at convert' -l to -x -a 'xpdl text json' -d 'The form of the output'
complete -c qorwfl -n '__qorwfl_at convert' -s o -l output -r -d 'The output file'
complete -c qorwfl -n '__qorwfl_at convert' -l config -r -d 'The property file, or its folder'
complete -c qorwfl -n '__qorwfl_at convert' -l created -x -d 'The Created text of a document'

complete -c qorwfl -n '__qorwfl_at check' -l format -x -a 'text json sarif' -d 'The form of the findings'
complete -c qorwfl -n '__qorwfl_at check' -l strict -d 'Warnings fail too'
complete -c qorwfl -n '__qorwfl_at check' -s o -l output -r -d 'The file that takes the findings'

complete -c qorwfl -n '__qorwfl_at diff' -l format -x -a 'xpdl text json' -d 'The form of both'
complete -c qorwfl -n '__qorwfl_at diff' -l config -r -d 'The property file, or its folder'

complete -c qorwfl -n '__qorwfl_at graph' -l format -x -a 'dot mermaid svg' -d 'The form of the picture'
complete -c qorwfl -n '__qorwfl_at graph' -l from -x -a 'xpdl text json' -d 'The form of the input'
complete -c qorwfl -n '__qorwfl_at graph' -s o -l output -r -d 'The output file'
complete -c qorwfl -n '__qorwfl_at graph' -l config -r -d 'The property file, or its folder'

set -l without '__qorwfl_without_subcommand config check show explain'
complete -c qorwfl -f -n $without -a check -d 'Look for what is wrong in a property file'
complete -c qorwfl -f -n $without -a show -d 'Show a property file as the library sees it'
complete -c qorwfl -f -n $without -a explain -d 'Tell how the type of an object is found'
complete -c qorwfl -n '__qorwfl_at config check' -l format -x -a 'text json' -d 'The form of the findings'
complete -c qorwfl -n '__qorwfl_at config check' -l strict -d 'Warnings fail too'
complete -c qorwfl -n '__qorwfl_at config show' -l config -r -d 'The property file, or its folder'
complete -c qorwfl -n '__qorwfl_at config show' -l format -x -a 'text json' -d 'The form of the output'
complete -c qorwfl -n '__qorwfl_at config explain' -l environment -x -d 'The environment of the object'
complete -c qorwfl -n '__qorwfl_at config explain' -l table -x -d 'The table of the object'
complete -c qorwfl -n '__qorwfl_at config explain' -l config -r -d 'The property file, or its folder'
complete -c qorwfl -n '__qorwfl_at config explain' -l format -x -a 'text json' -d 'The form of the output'

set -l without '__qorwfl_without_subcommand url action context instance parm explain'
complete -c qorwfl -f -n $without -a action -d 'Print the URLs of actions'
complete -c qorwfl -f -n $without -a context -d 'Print the URLs of object instances in a context'
complete -c qorwfl -f -n $without -a instance -d 'Print the URLs of object instances'
complete -c qorwfl -f -n $without -a parm -d 'Print a URL with one more parameter'
complete -c qorwfl -f -n $without -a explain -d 'Take URLs apart and tell why one is rejected'
for name in instance context
    complete -c qorwfl -n "__qorwfl_at url $name" -l db-name -x -d 'The database of the object'
    complete -c qorwfl -n "__qorwfl_at url $name" -l environment -x -d 'The environment of the object'
    complete -c qorwfl -n "__qorwfl_at url $name" -l table -x -d 'The table of the object'
    complete -c qorwfl -n "__qorwfl_at url $name" -l coid -x -d 'The identifier of the object'
    complete -c qorwfl -n "__qorwfl_at url $name" -l compid -x -d 'The second identifier of the object'
end
complete -c qorwfl -n '__qorwfl_at url context' -l context -x -d 'The context'
complete -c qorwfl -n '__qorwfl_at url explain' -l format -x -a 'text json' -d 'The form of the output'
