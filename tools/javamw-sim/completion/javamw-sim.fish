# Copyright (c) 2026 the applist authors
# SPDX-License-Identifier: Apache-2.0
# Completion of javamw-sim for fish.

set -l commands serve watch call run shell applications record replay compare

function __javamw_sim_option --description 'An option of some commands'
    # COMMANDS OPTIONS-OF-COMPLETE...
    complete -c javamw-sim -n "__fish_seen_subcommand_from $argv[1]" $argv[2..-1]
end

complete -c javamw-sim -f
complete -c javamw-sim -s h -l help -d 'Print a summary'
complete -c javamw-sim -n "not __fish_seen_subcommand_from $commands" -l version -d 'Print the version'

set -l first "not __fish_seen_subcommand_from $commands"
complete -c javamw-sim -n $first -a serve -d 'Fill the list of each application that comes, then watch'
complete -c javamw-sim -n $first -a watch -d 'Print every event and the selection read after it'
complete -c javamw-sim -n $first -a call -d 'Call one function and print the items of the reply'
complete -c javamw-sim -n $first -a run -d 'Play scenarios and print whether their expectations hold'
complete -c javamw-sim -n $first -a shell -d 'Do what is typed, statement by statement'
complete -c javamw-sim -n $first -a applications -d 'Print the applications that a recorded broadcast carries'
complete -c javamw-sim -n $first -a record -d 'Write down what a middleware and the application say'
complete -c javamw-sim -n $first -a replay -d 'Say to an application what was recorded'
complete -c javamw-sim -n $first -a compare -d 'Tell what differs between two recordings'

__javamw_sim_option 'serve watch call run shell record replay' -s a -l address -x -d 'Bus to use instead of the system bus'
__javamw_sim_option 'serve watch call replay' -s t -l timeout -x -d 'Limit the wait for an application'
__javamw_sim_option 'serve watch call shell applications replay compare' -s j -l json -d 'Print JSON'
__javamw_sim_option 'serve watch call' -s r -l record -r -F -d 'Record all traffic'
__javamw_sim_option serve -s i -l items -r -F -d 'Lines of id, tab and name'
__javamw_sim_option serve -s b -l broadcast -r -F -d 'What a recorded broadcast offers'
__javamw_sim_option 'serve applications' -s s -l service -x -d 'Only this service'
__javamw_sim_option 'serve applications' -s l -l language -x -d 'Languages of names'
__javamw_sim_option 'serve applications' -l text -x -a 'auto dvb isdb arib latin' -d 'How texts are coded'
__javamw_sim_option serve -l all -d 'Hidden applications and those of trials, too'
__javamw_sim_option serve -l interval -x -d 'Time between changes'
__javamw_sim_option applications -l csv -d 'Print comma-separated values'
__javamw_sim_option run -s c -l check -d 'Only look for errors in the files'
__javamw_sim_option run -s k -l keep-going -d 'Continue after a failure'
__javamw_sim_option shell -l offline -d 'Join the bus only when a statement needs it'
__javamw_sim_option replay -l speed -x -a 'max 1 2 10' -d 'Multiple of the recorded speed'
__javamw_sim_option replay -s w -l wait -x -d 'Limit the wait for missing messages'
__javamw_sim_option replay -l conversation -x -d 'Number of the conversation to replay'
__javamw_sim_option compare -l names -d 'Compare unique bus names, too'
__javamw_sim_option compare -l tolerance -x -d 'Compare times, too'

__javamw_sim_option call -a 'SetSelection GetSelection GetAllItems RemoveAllItems AddItems AddItemAtEnd SetClicked RemoveItem ModifyItem'
__javamw_sim_option 'run applications record replay compare' -F

functions --erase __javamw_sim_option
