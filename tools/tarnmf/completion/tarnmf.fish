# SPDX-License-Identifier: Apache-2.0
# Completion of tarnmf in fish: the tool itself knows what may stand where.

function __tarnmf_complete
    # The word at the cursor with its quotes removed; one that is still open is closed for that.
    set -l written (commandline -ct)
    set -l word (string unescape -- $written; or string unescape -- $written\'; or string unescape -- $written\"; or echo -- $written)
    set -l words (commandline -opc)
    command tarnmf complete -- $words[2..-1] "$word" 2>/dev/null
end

function __tarnmf_candidates
    for line in (__tarnmf_complete)
        switch $line
            case \tdirectories
                __fish_complete_directories (commandline -ct) ''
            case \t\*
            case '*'
                printf '%s\n' $line
        end
    end
end

function __tarnmf_wants_files
    contains -- \tfiles (__tarnmf_complete)
end

complete -c tarnmf -f -a '(__tarnmf_candidates)'
complete -c tarnmf -n __tarnmf_wants_files -F
