# Two pictures side by side: what a command job takes of the scheduler's CPU, and what adding a queue
# takes, against the queues that there are.
# Takes: folder (the rows of the two tables), target (the SVG file).
set terminal svg size 960,400 font 'sans-serif,12' background 'white'
set output target
set multiplot layout 1,2
set key top left
set grid
set xrange [0:*]
set yrange [0:*]
set xlabel 'queues'

set title 'A command job a minute for each queue'
set ylabel 'CPU for each job, ms'
plot folder.'/jobs.dat' using 1:3 with linespoints pt 7 ps 0.5 title 'the scheduler', \
     '' using 1:4 with linespoints pt 7 ps 0.5 title 'its backends and filters'

set title 'Adding the queues'
set ylabel "the scheduler's CPU for each queue, ms"
plot folder.'/tools.dat' using 1:3 with linespoints pt 7 ps 0.5 notitle
unset multiplot
